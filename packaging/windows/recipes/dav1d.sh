# dav1d: decodes AV1, which FFmpeg has no decoder of its own for.
source=dav1d
upstream=1.0.0
licences='COPYING debian/copyright doc/PATENTS'

# A command as Meson's files have it: 'ccache', 'gcc'.
quoted() {
  # shellcheck disable=SC2086  # words
  printf "'%s'," $1
}

build() {
  cat >cross.txt <<CROSS
[binaries]
c = [$(quoted "$CC")]
ar = '$AR'
strip = '$STRIP'
windres = '$WINDRES'
nasm = 'nasm'
[host_machine]
system = 'windows'
cpu_family = 'x86_64'
cpu = 'x86_64'
endian = 'little'
CROSS
  meson setup made --cross-file cross.txt --prefix "$prefix" --libdir lib --buildtype release \
    --default-library static -Denable_tools=false -Denable_tests=false -Denable_examples=false
  ninja -C made -j"$jobs"
  ninja -C made install
}
