@echo off
echo Send problems with Corvane to us
mkdir "/dvd"
echo ***please wait while the titles are multiplexed.
echo *multiplexing title: 1.....
"bin/mplex.exe" -f 8 -O 0ms -o "/dvd/title1.mpg"  "/a b.m2v"  "/c.ac3" 
echo *authoring title(s).....

"bin/dvdauthor.exe" -x "/app/config.xml"
erase "/dvd"/*.mpg
echo *process complete
