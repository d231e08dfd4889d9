# Films imported by the Windows program under Wine with its own ffmpeg.exe, and by this machine's
# program with this machine's, read by tools_test.sh: the streams must be equal up to what an encoder
# rounds, and the projects but for paths.

# Two seconds of a moving picture with a tone: `film FILE SOURCE OPTION...`.
film() {
  file=$1 source=$2
  shift 2
  ffmpeg -nostdin -v error -y -f lavfi -i "$source" -f lavfi -i sine=frequency=440:sample_rate=44100 \
    -t 2 "$@" "$file"
}

# Imports a film on both systems into streams/ of here/ and there/: `import_both FILM OPTION...`.
import_both() {
  film=$1
  shift
  mkdir -p here there
  windows_program 'Program & Töols 字'
  CORVANE_HOME=$work/home "$linux_bin/corvane-author" --import "$film" --to "here/50 % & streams" "$@" \
    here/disc.cvp >here.log 2>&1 || fail 'the program of this machine failed'
  "$wine" 'Program & Töols 字/corvane-author.exe' --import "$film" --to 'there/50 % & streams' "$@" \
    there/disc.cvp >there.log 2>&1 </dev/null || {
    cat 'Program & Töols 字/CorvaneIMPORT.txt' >&2
    fail 'the program of Windows failed'
  }
}

# What is plain of a stream: its size and shape, its pictures one by one, with their kinds.
pictures() {
  ffprobe -v error -select_streams v -show_entries \
    stream=codec_name,width,height,pix_fmt,display_aspect_ratio,field_order,r_frame_rate:frame=pict_type,repeat_pict,top_field_first \
    -of default=noprint_wrappers=1 "$1"
}

# Fails unless two video streams are of the same pictures: the same bytes, or less apart than anybody
# sees.
same_video() {
  pictures "$1" >here.pictures
  pictures "$2" >there.pictures
  grep -q '^pict_type=I' here.pictures || fail "$1 has no pictures"
  same here.pictures there.pictures
  cmp -s "$1" "$2" && return 0
  ratio=$(ffmpeg -nostdin -v info -i "$1" -i "$2" -lavfi psnr -f null - 2>&1 |
    sed -n 's/^.*PSNR.* average:\([a-z0-9]*\).*$/\1/p')
  echo "$2: not the same bytes, PSNR $ratio dB"
  [ "$ratio" = inf ] || [ "${ratio:-0}" -ge 45 ] || fail "the pictures of $2 are others"
}

# The same of sound: no sample differs by more than 90 dB below the loudest.
same_sound() {
  for stream in "$1" "$2"; do
    ffprobe -v error -show_entries stream=codec_name,channels,sample_rate,bit_rate,nb_read_packets \
      -count_packets -of default=noprint_wrappers=1 "$stream" >"${stream%%/*}.sound"
  done
  grep -q '^nb_read_packets=[1-9]' here.sound || fail "$1 has no sound"
  same here.sound there.sound
  cmp -s "$1" "$2" && return 0
  peak=$(ffmpeg -nostdin -v info -i "$1" -i "$2" -filter_complex \
    '[1]aeval=-val(ch):c=same[n];[0][n]amix=inputs=2:normalize=0,astats=measure_perchannel=none' \
    -f null - 2>&1 | sed -n 's/^.*Peak level dB: -*\([a-z0-9]*\).*$/\1/p')
  echo "$2: not the same bytes, $peak dB apart"
  [ "$peak" = inf ] || [ "${peak:-0}" -ge 90 ] || fail "the sound of $2 is another"
}

# Fails unless both have made these streams, both projects tell the same of them, and nothing else is
# there: `same_import VIDEO SOUND`.
same_import() {
  for side in here there; do
    (cd "$side/50 % & streams" && ls -A) >"$side.files"
    sed -e 's/Z:\\/\\/g' -e "s/\\\\$side\\\\/\\\\/g" "$side/disc.cvp" >"$side.project"
  done
  printf '%s\n' "$@" | sort | diff - here.files || fail 'other files on this machine'
  same here.files there.files
  same here.project there.project
  # shellcheck disable=SC1003  # no quote is meant
  grep -q -F '\there\50 % & streams\' there/disc.cvp || fail 'the project does not refer to the streams'
  same_video "here/50 % & streams/$1" "there/50 % & streams/$1"
  same_sound "here/50 % & streams/$2" "there/50 % & streams/$2"
}

# In two passes, whose notes go beside the streams; turned, as a phone does.
test_import_h264_and_aac() {
  film plain.mp4 testsrc2=size=640x360:rate=25 -c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a aac
  ffmpeg -nostdin -v error -y -i plain.mp4 -c copy -metadata:s:v rotate=90 'Größe 50% & 日本.mp4'
  import_both 'Größe 50% & 日本.mp4'
  same_import 'Größe 50% & 日本.m2v' 'Größe 50% & 日本.ac3'
}

# A film of the cinema's rate, for NTSC by repeated fields, in one pass.
test_import_mpeg4_and_mp3() {
  film film.avi testsrc2=size=512x384:rate=24000/1001 -c:v mpeg4 -vtag XVID -bf 2 -q:v 3 -c:a libmp3lame
  import_both film.avi --constant 4
  same_import film.m2v film.ac3
  grep -q '^repeat_pict=1' there.pictures || fail 'no picture has a repeated field'
}

# Twice the rate of a disc becomes fields.
test_import_vp9_and_opus() {
  film film.mkv testsrc2=size=480x270:rate=50 -c:v libvpx-vp9 -deadline realtime -cpu-used 8 -b:v 2M \
    -c:a libopus
  import_both film.mkv --constant 4
  same_import film.m2v film.ac3
  grep -q '^field_order=t' there.pictures || fail 'the pictures have no fields'
}

# Of a high dynamic range, in 10 bits, with a text.
test_import_hevc_of_high_range() {
  printf '1\n00:00:00,500 --> 00:00:01,500\nGrün & blau\n' >text.srt
  film bare.mkv testsrc2=size=640x360:rate=25 -c:v libx265 -preset ultrafast -pix_fmt yuv420p10le \
    -x265-params log-level=error:colorprim=bt2020:transfer=smpte2084:colormatrix=bt2020nc -c:a flac
  ffmpeg -nostdin -v error -y -i bare.mkv -i text.srt -map 0 -map 1 -c copy film.mkv
  import_both film.mkv --constant 4
  mkdir texts
  mv 'here/50 % & streams/film.srt' texts/here.srt
  mv 'there/50 % & streams/film.srt' texts/there.srt
  same texts/here.srt texts/there.srt
  grep -q zscale 'Program & Töols 字/import.bat' || fail 'the light was not brought down'
  same_import film.m2v film.ac3
}

# A text beside the film in the characters of old programs becomes UTF-8.
test_import_text_of_old_characters() {
  film film.avi testsrc2=size=320x240:rate=25 -c:v mpeg4 -c:a libmp3lame
  subtitles 'Grün & blau' | iconv -f UTF-8 -t CP1252 >film.de.srt
  import_both film.avi --constant 8
  text=$(cd 'there/50 % & streams' && echo *.srt)
  same "here/50 % & streams/$text" "there/50 % & streams/$text"
  says "there/50 % & streams/$text" 'Grün & blau'
}

test_import_av1() {
  film film.mp4 testsrc2=size=320x180:rate=25 -c:v libaom-av1 -cpu-used 8 -usage realtime -c:a aac
  import_both film.mp4 --constant 4
  same_import film.m2v film.ac3
}

# Without the tool nothing is begun, and it is said where to get it.
test_import_without_ffmpeg() {
  film film.mp4 testsrc2=size=320x180:rate=25 -c:v mpeg4 -c:a aac
  windows_program program
  rm program/bin/ffmpeg.exe
  status=0
  "$wine" program/corvane-author.exe --import film.mp4 --to streams disc.cvp >there.log 2>&1 </dev/null ||
    status=$?
  [ "$status" = 3 ] || fail "status $status"
  says there.log 'ffmpeg.exe is not in the folder'
  says there.log 'https://ffmpeg.org and with the full installer of Corvane.'
  [ ! -e streams ] && [ ! -e disc.cvp ] || fail 'something was made'
}

# Every decoder of FFmpeg's own that this machine's has is there too, and one for AV1.
test_ffmpeg_has_all_decoders() {
  ffmpeg -v error -decoders >here.log
  under_wine ffmpeg -v error -decoders >there.log
  for side in here there; do
    tr -d '\r' <"$side.log" | sed '1,/------/d' | awk '{ print $2 }' | sort >"$side.decoders"
  done
  [ "$(wc -l <there.decoders)" -gt 400 ] || fail 'there are few decoders'
  # What others have written, and what devices do.
  comm -23 here.decoders there.decoders | grep -v -e '^lib' -e '_qsv$' -e '_cuvid$' -e '_v4l2m2m$' >missing || true
  [ ! -s missing ] || fail "no decoder for $(tr '\n' ' ' <missing)"
  grep -q -x libdav1d there.decoders || fail 'there is no decoder for AV1'
}

# Nothing but files can be opened: a film of a stranger leads into no network.
test_ffmpeg_opens_files_alone() {
  under_wine ffmpeg -v error -protocols >there.log
  tr -d ' \r' <there.log | grep -v : | sort -u >protocols
  printf 'file\npipe\n' | diff - protocols || fail 'there are other protocols'
}
