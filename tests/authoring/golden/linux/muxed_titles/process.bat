@echo off
echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md
mkdir "/home/anna/discs/my dvd"
echo ***please wait while the titles are multiplexed.
echo *authoring title(s).....

"/home/anna/.local/share/corvane/bin/dvdauthor.exe" -x "/home/anna/.local/share/corvane/config.xml"
erase "/home/anna/discs/my dvd"/*.mpg
echo *process complete
