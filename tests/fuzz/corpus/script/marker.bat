@echo off
echo *process complete
"bin/gm.exe" "*process complete"
"bin/gm.exe" " *multiplexing title: 1....." | "bin/mplex.exe" "**ER"
"bin/mplex.exe" "**ERROR"
