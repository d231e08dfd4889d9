@echo off
echo Send problems with Corvane to the Corvane developers, corvane-bugs@example.org
mkdir "D:\discs\my dvd"
echo ***please wait while the titles are multiplexed.
echo *authoring title(s).....

"C:\Program Files\Corvane\bin\dvdauthor.exe" -x "C:\Program Files\Corvane\config.xml"
erase "D:\discs\my dvd"\*.mpg
echo *process complete
