@echo off
echo *creating m2v still
"bin/jpeg2yuv.exe" -n 1 -I p -f 29.97 -j "x.jpg" | "bin/mpeg2enc.exe" -f 8 -n n -o "o.m2v"
echo *process complete
