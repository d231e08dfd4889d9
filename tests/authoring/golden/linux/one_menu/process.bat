@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "/home/anna/discs/my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd/title1.mpg"  "/media/movie.m2v"  "/media/movie.ac3" 
echo *generating button images.......
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/highlight1.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/select1.png"
echo *generating highlight button 1 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "/home/anna/.local/share/corvane/highlight1.png"
echo *generating select button 1 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill yellow -draw "roundrectangle 0,0  98, 2, 2,3" "/home/anna/.local/share/corvane/select1.png"
echo *multiplexing menu 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -o "/home/anna/discs/my dvd/menu1.mpg" "/media/main.m2v"
"/home/anna/.local/share/corvane/bin/spumux.exe" "/home/anna/.local/share/corvane/menu1.xml" <"/home/anna/discs/my dvd/menu1.mpg" > "/home/anna/discs/my dvd/menusub1.mpg"
erase "/home/anna/discs/my dvd/menu1.mpg"
echo *authoring title(s).....

"/home/anna/.local/share/corvane/bin/dvdauthor.exe" -x "/home/anna/.local/share/corvane/config.xml"
erase "/home/anna/discs/my dvd"/*.mpg
echo *process complete
