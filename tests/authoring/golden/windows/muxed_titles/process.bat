@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *process complete
