@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "/home/anna/discs/my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd/title1.mpg"  "/media/movie.m2v"  "/media/english.ac3"  "/media/french.mp2" 
echo *multiplexing title: 3.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O -250ms -o "/home/anna/discs/my dvd/title3.mpg"  "/media/extra.mpv"  "/media/extra.mpa" 
echo *authoring title(s).....

"/home/anna/.local/share/corvane/bin/dvdauthor.exe" -x "/home/anna/.local/share/corvane/config.xml"
erase "/home/anna/discs/my dvd"/*.mpg
echo *generating udf iso.....
"/home/anna/.local/share/corvane/bin/mkisofs.exe" -dvd-video -V DVDVideo -udf -o "/home/anna/discs/my dvd.iso" "/home/anna/discs/my dvd"
echo *process complete
