@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "/home/anna/discs/my dvd & more"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd & more/title1.mpg"  "/media/movie.m2v"  "/media/movie.ac3" 
echo *multiplexing title: 3.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd & more/title3.mpg"  "/media/extra.m2v"  "/media/extra.ac3" 
echo *multiplexing title: 4.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -O 0ms -o "/home/anna/discs/my dvd & more/title4.mpg"  "/media/last.m2v"  "/media/last.ac3" 
echo *generating button images.......
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/highlight1.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/select1.png"
echo *generating highlight button 1 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "/home/anna/.local/share/corvane/highlight1.png"
echo *generating highlight button 2 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill green -draw "roundrectangle 40,99  238, 139, 2,3" "/home/anna/.local/share/corvane/highlight1.png"
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  42, 101  236, 137, 2,3" "/home/anna/.local/share/corvane/highlight1.png"
echo *generating highlight button 3 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" composite -geometry +300+100 "/media/play.bmp" "/home/anna/.local/share/corvane/highlight1.png" "/home/anna/.local/share/corvane/highlight1.png"
echo *generating select button 1 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "/home/anna/.local/share/corvane/select1.png"
echo *generating select button 2 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" composite -geometry +40+99 "/media/pressed.bmp" "/home/anna/.local/share/corvane/select1.png" "/home/anna/.local/share/corvane/select1.png"
echo *generating select button 3 for menu 1
"/home/anna/.local/share/corvane/bin/gm.exe" composite -geometry +300+100 "/media/pressed.bmp" "/home/anna/.local/share/corvane/select1.png" "/home/anna/.local/share/corvane/select1.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/highlight2.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/select2.png"
echo *generating highlight button 1 for menu 2
"/home/anna/.local/share/corvane/bin/gm.exe" composite -geometry +40+100 "/media/play.bmp" "/home/anna/.local/share/corvane/highlight2.png" "/home/anna/.local/share/corvane/highlight2.png"
echo *generating highlight button 2 for menu 2
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill brown -draw "roundrectangle 40,200  238, 203, 2,3" "/home/anna/.local/share/corvane/highlight2.png"
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 204  234, 199, 2,3" "/home/anna/.local/share/corvane/highlight2.png"
echo *generating select button 1 for menu 2
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill cyan -draw "roundrectangle 40,100  238, 103, 2,3" "/home/anna/.local/share/corvane/select2.png"
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 104  234, 99, 2,3" "/home/anna/.local/share/corvane/select2.png"
echo *generating select button 2 for menu 2
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill magenta -draw "roundrectangle 40,200  238, 203, 2,3" "/home/anna/.local/share/corvane/select2.png"
"/home/anna/.local/share/corvane/bin/gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 204  234, 199, 2,3" "/home/anna/.local/share/corvane/select2.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/highlight3.png"
"/home/anna/.local/share/corvane/bin/gm.exe" convert -size 720x480 null:#010101 "/home/anna/.local/share/corvane/select3.png"
echo *multiplexing menu 1.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -o "/home/anna/discs/my dvd & more/menu1.mpg" "/media/main.m2v" "/media/main.ac3"
"/home/anna/.local/share/corvane/bin/spumux.exe" "/home/anna/.local/share/corvane/menu1.xml" <"/home/anna/discs/my dvd & more/menu1.mpg" > "/home/anna/discs/my dvd & more/menusub1.mpg"
erase "/home/anna/discs/my dvd & more/menu1.mpg"
echo *multiplexing menu 2.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -o "/home/anna/discs/my dvd & more/menu2.mpg" "/media/second.m2v"
"/home/anna/.local/share/corvane/bin/spumux.exe" "/home/anna/.local/share/corvane/menu2.xml" <"/home/anna/discs/my dvd & more/menu2.mpg" > "/home/anna/discs/my dvd & more/menusub2.mpg"
erase "/home/anna/discs/my dvd & more/menu2.mpg"
echo *multiplexing menu 3.....
"/home/anna/.local/share/corvane/bin/mplex.exe" -f 8 -o "/home/anna/discs/my dvd & more/menu3.mpg" "/media/empty.m2v"
"/home/anna/.local/share/corvane/bin/spumux.exe" "/home/anna/.local/share/corvane/menu3.xml" <"/home/anna/discs/my dvd & more/menu3.mpg" > "/home/anna/discs/my dvd & more/menusub3.mpg"
erase "/home/anna/discs/my dvd & more/menu3.mpg"
echo *authoring title(s).....

"/home/anna/.local/share/corvane/bin/dvdauthor.exe" -x "/home/anna/.local/share/corvane/config.xml"
erase "/home/anna/discs/my dvd & more"/*.mpg
echo *generating udf iso.....
"/home/anna/.local/share/corvane/bin/mkisofs.exe" -dvd-video -V DVDVideo -udf -o "/home/anna/discs/my dvd & more.iso" "/home/anna/discs/my dvd & more"
echo *process complete
