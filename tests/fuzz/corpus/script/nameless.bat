@echo off
"bin/dvdauthor.exe" -x ""
"bin/spumux.exe" -s 0 "" <"" > ""
