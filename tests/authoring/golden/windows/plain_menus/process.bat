@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title1.mpg"  "C:\media\movie.m2v"  "C:\media\movie.ac3" 
echo *multiplexing title: 2.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title2.mpg"  "C:\media\extra.m2v"  "C:\media\extra.ac3" 
echo *generating button images.......
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x576 null:#010101 "C:\Program Files\Corvane\highlight1.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x576 null:#010101 "C:\Program Files\Corvane\select1.png"
echo *generating highlight button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\highlight1.png"
echo *generating highlight button 2 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill blue -draw "roundrectangle 40,100  238, 139, 2,3" "C:\Program Files\Corvane\highlight1.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  43, 103  235, 136, 2,3" "C:\Program Files\Corvane\highlight1.png"
echo *generating select button 1 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill black -draw "roundrectangle 0,0  98, 2, 2,3" "C:\Program Files\Corvane\select1.png"
echo *generating select button 2 for menu 1
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill orange -draw "roundrectangle 40,100  238, 139, 2,3" "C:\Program Files\Corvane\select1.png"
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  43, 103  235, 136, 2,3" "C:\Program Files\Corvane\select1.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x576 null:#010101 "C:\Program Files\Corvane\highlight2.png"
"C:\Program Files\Corvane\bin\gm.exe" convert -size 720x576 null:#010101 "C:\Program Files\Corvane\select2.png"
echo *generating highlight button 1 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill white -draw "roundrectangle 10,20  108, 22, 2,3" "C:\Program Files\Corvane\highlight2.png"
echo *generating select button 1 for menu 2
"C:\Program Files\Corvane\bin\gm.exe" mogrify +antialias -fill grey -draw "roundrectangle 10,20  108, 22, 2,3" "C:\Program Files\Corvane\select2.png"
echo *multiplexing menu 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd\menu1.mpg" "C:\media\main.m2v" "C:\media\main.ac3"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu1.xml" <"D:\discs\my dvd\menu1.mpg" > "D:\discs\my dvd\menusub1.mpg"
erase "D:\discs\my dvd\menu1.mpg"
echo *multiplexing menu 2.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -o "D:\discs\my dvd\menu2.mpg" "C:\media\still.m2v"
"C:\Program Files\Corvane\bin\spumux.exe" "C:\Program Files\Corvane\menu2.xml" <"D:\discs\my dvd\menu2.mpg" > "D:\discs\my dvd\menusub2.mpg"
erase "D:\discs\my dvd\menu2.mpg"
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *process complete
