# Tests of mkisofs.exe, read by tools_test.sh.

# A DVD folder of 12 MB (progress is told every 10) in "disc", made by this machine's tools.
make_disc() {
  mplex -f 8 -o title.mpg "$media/garden.m2v" "$media/garden-english.ac3" 2>mplex.log
  cat >config.xml <<XML
<dvdauthor dest="disc"><vmgm/><titleset><titles>
<pgc><vob file="title.mpg"/></pgc>
<pgc><vob file="$media/tour.vob"/></pgc>
</titles></titleset></dvdauthor>
XML
  dvdauthor -x config.xml 2>dvdauthor.log
}

# The tool of this machine with the time that is told, as the other tool has it by itself.
at_a_time() {
  cat >clock.c <<'C'
#include <stdlib.h>
#include <time.h>

time_t time(time_t* when) {
  const time_t told = (time_t)atoll(getenv("SOURCE_DATE_EPOCH"));
  if (when)
    *when = told;
  return told;
}
C
  cc -shared -fPIC clock.c -o clock.so
  SOURCE_DATE_EPOCH=1700000000
  export SOURCE_DATE_EPOCH
  LD_PRELOAD=$work/clock.so "$@"
}

# Prints where the images differ, as "sector byte here there", the bytes as octal numbers.
differences() {
  cmp -l "$1" "$2" | awk '{ at = $1 - 1; print int(at / 2048), at % 2048, $2, $3 }'
}

# All but: the name of the system, in the ISO descriptor; the volume's number, made of the processor
# time, in both UDF descriptors, with their checksums; and the blocks between the files of VIDEO_TS,
# where the tool of this machine leaves what lay in its memory.
test_mkisofs_image() {
  make_disc
  at_a_time genisoimage -dvd-video -V DVDVideo -udf -o here.iso disc 2>here.log
  under_wine mkisofs -dvd-video -V DVDVideo -udf -o "$(named "$work/there.iso")" \
    "$(named "$work/disc")" 2>there.log
  [ -s there.iso ] || fail 'there is no image'
  [ "$(stat -c %s here.iso)" = "$(stat -c %s there.iso)" ] || fail 'the image has another size'
  differences here.iso there.iso | awk '
    $1 == 16 && $2 >= 8 && $2 < 40 { next }
    ($1 == 32 || $1 == 48) && ($2 == 4 || $2 == 8 || $2 == 9 || ($2 >= 73 && $2 < 89)) { next }
    $1 > 256 && $4 == 0 { print $1 >"padding"; next }
    { print }' >others
  [ ! -s others ] || fail "$(wc -l <others) bytes differ, the first: $(head -n 1 others)"
  touch padding
  sort -u padding | while read -r sector; do
    [ "$(dd if=there.iso bs=2048 skip="$sector" count=1 2>dd.log | tr -d '\0' | wc -c)" = 0 ] ||
      fail "block $sector is another"
  done
  for file in $(cd disc && find VIDEO_TS -type f); do
    isoinfo -i there.iso -x "/$file;1" >back
    cmp "disc/$file" back || fail "$file is another in the image"
  done
  [ "$(find disc/VIDEO_TS -type f | wc -l)" -ge 5 ] || fail 'the tool of this machine made no disc'
  says there.log '% done, estimate finish'
  says there.log ' extents written ('
}

# Read back as a player would find its way: by the names in UDF, which are those of the folder.
test_mkisofs_names() {
  make_disc
  mkdir -p 'a & b/Größe 50% – 日本'
  mv disc 'a & b/Größe 50% – 日本/film ž'
  echo text >'a & b/Größe 50% – 日本/film ž/Lies mich – 読む.txt'
  under_wine mkisofs -dvd-video -V DVDVideo -udf -o \
    "$(named "$work/a & b/Größe 50% – 日本/film ž.iso")" \
    "$(named "$work/a & b/Größe 50% – 日本/film ž")" 2>there.log
  # In 16 bits a character, as UDF keeps what is not Latin.
  printf 'Lies mich – 読む.txt' | iconv -f UTF-8 -t UTF-16BE >name
  LC_ALL=C grep -q -a -F -f name "a & b/Größe 50% – 日本/film ž.iso" || fail 'the name is not there'
  isoinfo -i "a & b/Größe 50% – 日本/film ž.iso" -x '/VIDEO_TS/VTS_01_1.VOB;1' >back
  cmp 'a & b/Größe 50% – 日本/film ž/VIDEO_TS/VTS_01_1.VOB' back
}

# Neither makes an image; status and text are those of this machine's tool.
refused() {
  status=0
  under_wine mkisofs -dvd-video -V DVDVideo -udf -o "$1" "$2" 2>there.log || status=$?
  [ "$status" = "$3" ] || fail "status $status"
  says there.log "mkisofs: $4"
}

test_mkisofs_refusals() {
  mkdir empty
  refused "$(named "$work/x.iso")" "$(named "$work/empty")" 255 'Unable to make a DVD-Video image.'
  [ ! -s x.iso ] || fail 'there is an image'
  refused "$(named "$work/x.iso")" "$(named "$work/nowhere")" 2 \
    "No such file or directory. Invalid node - '$(named "$work/nowhere")'."
  make_disc
  refused 'Z:\no\x.iso' "$(named "$work/disc")" 2 \
    "No such file or directory. Unable to open disc image file 'Z:\\no\\x.iso'."
}

# More than the 260 characters that Windows once ended at.
test_mkisofs_long_names() {
  make_disc
  part="long$(printf ' long%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20)"
  folder="$work/$part/$part/$part"
  mkdir -p "$folder"
  mv disc "$folder/disc"
  wide=$(named "$folder")
  [ "${#wide}" -gt 260 ] || fail 'the name is not long'
  under_wine mkisofs -dvd-video -V DVDVideo -udf -o "$wide\\disc.iso" "$wide\\disc" 2>there.log
  isoinfo -i "$folder/disc.iso" -x '/VIDEO_TS/VTS_01_1.VOB;1' >back
  cmp "$folder/disc/VIDEO_TS/VTS_01_1.VOB" back
}
