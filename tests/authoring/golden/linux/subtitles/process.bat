@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "/home/anna/discs/my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd/title1.mpg"  "/media/silent.m2v"  "/media/silent.ac3" 
echo *multiplexing title: 2.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd/title2.mpg"  "/media/movie.m2v"  "/media/movie.ac3" 
echo *processing subtitles for title: 2 sub 1...
rename "/home/anna/discs/my dvd/title2.mpg" presub.mpg
"/home/anna/.local/share/corvane/bin/spumux.exe" -s 0 "/home/anna/.local/share/corvane/sub2-1.xml" <"/home/anna/discs/my dvd/presub.mpg" > "/home/anna/discs/my dvd/title2.mpg"
erase "/home/anna/discs/my dvd/presub.mpg"
echo *processing subtitles for title: 2 sub 2...
rename "/home/anna/discs/my dvd/title2.mpg" presub.mpg
"/home/anna/.local/share/corvane/bin/spumux.exe" -s 1 "/home/anna/.local/share/corvane/sub2-2.xml" <"/home/anna/discs/my dvd/presub.mpg" > "/home/anna/discs/my dvd/title2.mpg"
erase "/home/anna/discs/my dvd/presub.mpg"
echo *authoring title(s).....

"/home/anna/.local/share/corvane/bin/dvdauthor.exe" -x "/home/anna/.local/share/corvane/config.xml"
erase "/home/anna/discs/my dvd"/*.mpg
echo *process complete
