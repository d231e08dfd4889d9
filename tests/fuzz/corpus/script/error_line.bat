@echo off
"bin/jpeg2yuv.exe" -o "**ERRo.m2v"
echo *process complete
