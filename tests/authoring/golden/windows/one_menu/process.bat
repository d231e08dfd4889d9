@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title1.mpg"  "C:\media\movie.m2v"  "C:\media\movie.ac3" 
echo *generating button images.......
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\highlight1.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\select1.png"
echo *generating highlight button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\highlight1.png"
echo *generating select button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill yellow -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\select1.png"
echo *multiplexing menu 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd\menu1.mpg" "C:\media\main.m2v"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu1.xml" <"D:\discs\my dvd\menu1.mpg" > "D:\discs\my dvd\menusub1.mpg"
erase "D:\discs\my dvd\menu1.mpg"
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *process complete
