# wxWidgets: the controls of the windows, and the text editor's (stc).  What the windows do not use
# is left out; pictures come through FFmpeg and as SVG, so no picture library either.
source=wxwidgets3.2
upstream=3.2.2
licences='docs/licence.txt docs/lgpl.txt docs/preamble.txt'

build() {
  mkdir cross
  cd cross
  # shellcheck disable=SC2046
  ../configure --host=$host --build="$(dpkg-architecture -qDEB_BUILD_GNU_TYPE)" --prefix="$prefix" \
    --disable-shared --enable-monolithic=no --enable-accessibility --with-cxx=17 \
    --disable-debug_info --disable-debug_flag --disable-precomp-headers \
    --disable-sys-libs --without-libpng --without-libjpeg --without-libtiff --without-expat \
    --without-zlib --without-liblzma --without-opengl \
    $(printf -- '--disable-%s ' \
      tests webrequest sockets protocol ipc fs_archive fs_inet xrc html htmlhelp aui propgrid ribbon \
      richtext mediactrl webview docview printarch svg postscript dbghelp joystick sound help mdi \
      mdidoc debugreport dialupman wizarddlg tarstream zipstream calendar datepick timepick richmsgdlg treelist \
      animatectrl bannerwindow dirpicker filepicker editablebox hyperlink infobar aboutdlg splash \
      tipdlg progressdlg)
  make -j"$jobs"
  make install
}
