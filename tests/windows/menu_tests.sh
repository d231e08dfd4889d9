# Menus that the Windows program makes under Wine, read by tools_test.sh: their texts must be there,
# whatever fonts the system has. GDI+ draws nothing of a font that it cannot use, and says nothing.

# How many bright pixels there are in a part of a menu: `bright MENU CROP`.
bright() {
  ffmpeg -nostdin -v error -i "$1" -frames:v 1 -vf "crop=$2" -f rawvideo -pix_fmt gray - |
    LC_ALL=C tr -d '\000-\310' | wc -c
}

# Letters without serifs, and with them.
test_make_menus() {
  windows_program 'Program & Töols 字'
  cp -r "$here/designs" 'Program & Töols 字/'
  windows_project "$media/sample.cvp" disc.cvp
  for design in slate amber; do
    "$wine" 'Program & Töols 字/corvane-author.exe' --make-menus "$design" --to "menus of $design" disc.cvp \
      >log 2>&1 </dev/null || {
      cat log >&2
      fail "making menus of $design failed"
    }
    says log 'made'
    for menu in "menus of $design"/*.m2v; do
      heading=$(bright "$menu" 560:90:80:40)
      echo "$menu: $heading bright pixels in the heading"
      [ "$heading" -ge 200 ] || fail "$menu has no heading"
    done
  done
  entries=$(bright 'menus of slate/titles-1.m2v' 540:280:90:150)
  [ "$entries" -ge 100 ] || fail 'the titles have no names'
}
