# genisoimage, under the name that scripts call it by: the ISO and UDF image of a DVD folder.  Of its
# package only this program; no jigdo templates, no compressed or remote input, no library of magic
# numbers.
source=cdrkit
upstream=1.1.11
pristine=yes
needs='tool'
licences='COPYING /usr/share/doc/genisoimage/copyright'

build() {
  sed -e 's/@SIZE_SHORT@/2/' -e 's/@SIZE_INT@/4/' -e 's/@SIZE_LONG@/4/' -e 's/@SIZE_LLONG@/8/' \
    -e 's/@SIZE_FLOAT@/4/' -e 's/@SIZE_DOUBLE@/8/' -e 's/@SIZE_PTR@/8/' \
    -e 's/@SHORTLESS@/1/' -e 's/@INTLESS@/3/' -e 's/@LONGLESS@/3/' -e 's/@LLONGLESS@/7/' \
    -e 's/@FLOATLESS@/3/' -e 's/@DOUBLELESS@/7/' -e 's/@PTRLESS@/7/' include/align.h.in >align.h
  # What its makefile makes the program of, less jigdo and the checksums that only jigdo wants, and
  # what that needs of the libraries beside it.
  find libunls libhfs_iso -name '*.c' >sources
  printf 'genisoimage/%s.c\n' genisoimage apple boot desktop dvd_file dvd_reader eltorito exclude \
    files fnmatch hash ifo_read joliet mac_label match multi name rock scsi stream tree udf vms \
    volume write boot-alpha boot-hppa boot-mips boot-mipsel endian >>sources
  printf 'librols/%s.c\n' astoi astoll comerr error fillbytes getargs getav0 geterrno handlecond \
    movebytes raisecond saveargs seterrno strcatl streql stdio/cvmod stdio/dat stdio/fcons \
    stdio/fdown stdio/ffileread stdio/ffilewrite stdio/fgetline stdio/file_raise stdio/fileclose \
    stdio/filemopen stdio/fileopen stdio/filepos stdio/fileread stdio/fileseek stdio/filewrite \
    stdio/flag stdio/flush stdio/niread stdio/niwrite stdio/nixread stdio/nixwrite >>sources
  printf '%s.c\n' elsewhere folders iconv no_jigdo >>sources
  # A source this old: variables defined in many files, functions that nobody declared.
  # shellcheck disable=SC2016  # the inner shell's own $0
  xargs -a sources -P "$jobs" -n 1 sh -c '
    case $0 in
      */*) dialect="-std=gnu89 -fcommon -w" ;;
      *) dialect="-std=gnu11 -Wall -Wextra -Werror" ;;
    esac
    $CC $CPPFLAGS $CFLAGS $dialect -D_FILE_OFFSET_BITS=64 -DHAVE_CONFIG_H -DUSE_LIBSCHILY \
      -DUSE_LARGEFILES -DUSE_ICONV -DABORT_DEEP_ISO_ONLY -DAPPLE_HYB -DUDF -DDVD_VIDEO -DSORTING -D_WIN \
      -include ./elsewhere.h -I. -Iinclude -Igenisoimage -Ilibhfs_iso -Iwodim \
      -c "$0" -o "$(echo "$0" | tr / _).o"'
  mkdir "$prefix/bin"
  $CC ./*.o $LDFLAGS "-Wl,$(where tool)/lib/tool.o" -lz -o "$prefix/bin/mkisofs.exe"
}
