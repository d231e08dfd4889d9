@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd & more"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd & more\title1.mpg"  "C:\media\movie.m2v"  "C:\media\movie.ac3" 
echo *multiplexing title: 3.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd & more\title3.mpg"  "C:\media\extra.m2v"  "C:\media\extra.ac3" 
echo *multiplexing title: 4.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd & more\title4.mpg"  "C:\media\last.m2v"  "C:\media\last.ac3" 
echo *generating button images.......
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\highlight1.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\select1.png"
echo *generating highlight button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\highlight1.png"
echo *generating highlight button 2 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill green -draw "roundrectangle 40,99  238, 139, 2,3" "C:\Program Files\Corvane\highlight1.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  42, 101  236, 137, 2,3" "C:\Program Files\Corvane\highlight1.png"
echo *generating highlight button 3 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" composite -geometry +300+100 "C:\media\play.bmp" "C:\Program Files\Corvane\highlight1.png" "C:\Program Files\Corvane\highlight1.png"
echo *generating select button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\select1.png"
echo *generating select button 2 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" composite -geometry +40+99 "C:\media\pressed.bmp" "C:\Program Files\Corvane\select1.png" "C:\Program Files\Corvane\select1.png"
echo *generating select button 3 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" composite -geometry +300+100 "C:\media\pressed.bmp" "C:\Program Files\Corvane\select1.png" "C:\Program Files\Corvane\select1.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\highlight2.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\select2.png"
echo *generating highlight button 1 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" composite -geometry +40+100 "C:\media\play.bmp" "C:\Program Files\Corvane\highlight2.png" "C:\Program Files\Corvane\highlight2.png"
echo *generating highlight button 2 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill brown -draw "roundrectangle 40,200  238, 203, 2,3" "C:\Program Files\Corvane\highlight2.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 204  234, 199, 2,3" "C:\Program Files\Corvane\highlight2.png"
echo *generating select button 1 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill cyan -draw "roundrectangle 40,100  238, 103, 2,3" "C:\Program Files\Corvane\select2.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 104  234, 99, 2,3" "C:\Program Files\Corvane\select2.png"
echo *generating select button 2 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill magenta -draw "roundrectangle 40,200  238, 203, 2,3" "C:\Program Files\Corvane\select2.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  44, 204  234, 199, 2,3" "C:\Program Files\Corvane\select2.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\highlight3.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x480 null:#010101 "C:\Program Files\Corvane\select3.png"
echo *multiplexing menu 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd & more\menu1.mpg" "C:\media\main.m2v" "C:\media\main.ac3"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu1.xml" <"D:\discs\my dvd & more\menu1.mpg" > "D:\discs\my dvd & more\menusub1.mpg"
erase "D:\discs\my dvd & more\menu1.mpg"
echo *multiplexing menu 2.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd & more\menu2.mpg" "C:\media\second.m2v"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu2.xml" <"D:\discs\my dvd & more\menu2.mpg" > "D:\discs\my dvd & more\menusub2.mpg"
erase "D:\discs\my dvd & more\menu2.mpg"
echo *multiplexing menu 3.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd & more\menu3.mpg" "C:\media\empty.m2v"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu3.xml" <"D:\discs\my dvd & more\menu3.mpg" > "D:\discs\my dvd & more\menusub3.mpg"
erase "D:\discs\my dvd & more\menu3.mpg"
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd & more"\*.mpg
echo *generating udf iso.....
"C:\Program Files\Corvane\bin\mkisofs.exe" -dvd-video -V DVDVideo -udf -o "D:\discs\my dvd & more.iso" "D:\discs\my dvd & more"
echo *process complete
