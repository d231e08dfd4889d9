@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title1.mpg"  "C:\media\movie.m2v"  "C:\media\english.ac3"  "C:\media\french.mp2" 
echo *multiplexing title: 3.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O -250ms -o "D:\discs\my dvd\title3.mpg"  "C:\media\extra.mpv"  "C:\media\extra.mpa" 
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *generating udf iso.....
"C:\Program Files\Corvane\bin\mkisofs.exe" -dvd-video -V DVDVideo -udf -o "D:\discs\my dvd.iso" "D:\discs\my dvd"
echo *process complete
