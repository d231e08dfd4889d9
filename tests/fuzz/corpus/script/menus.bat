"bin/gm.exe" convert -size 720x480 null:#010101 "/app/highlight1.png"
"bin/gm.exe" mogrify +antialias -fill #010101 -draw "roundrectangle  1, 2  3, 4, 2,3" "/app/highlight1.png"
"bin/spumux.exe" "/app/menu1.xml" <"/dvd/menu1.mpg" > "/dvd/menusub1.mpg"
rename "/dvd/title1.mpg" presub.mpg
