@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title1.mpg"  "C:\media\silent.m2v"  "C:\media\silent.ac3" 
echo *multiplexing title: 2.....
"C:\Program Files\Corvane\bin\mplex.exe" -f 8 -O 0ms -o "D:\discs\my dvd\title2.mpg"  "C:\media\movie.m2v"  "C:\media\movie.ac3" 
echo *processing subtitles for title: 2 sub 1...
rename "D:\discs\my dvd\title2.mpg" presub.mpg
"C:\Program Files\Corvane\bin\spumux.exe" -s 0 "C:\Program Files\Corvane\sub2-1.xml" <"D:\discs\my dvd\presub.mpg" > "D:\discs\my dvd\title2.mpg"
erase "D:\discs\my dvd\presub.mpg"
echo *processing subtitles for title: 2 sub 2...
rename "D:\discs\my dvd\title2.mpg" presub.mpg
"C:\Program Files\Corvane\bin\spumux.exe" -s 1 "C:\Program Files\Corvane\sub2-2.xml" <"D:\discs\my dvd\presub.mpg" > "D:\discs\my dvd\title2.mpg"
erase "D:\discs\my dvd\presub.mpg"
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *process complete
