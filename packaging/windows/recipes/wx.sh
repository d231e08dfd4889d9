# wxWidgets: the controls of the windows, and the text editor's (stc).  What the windows do not use
# is left out; pictures come through FFmpeg and as SVG, so no picture library either.
source=wxwidgets3.2
upstream=3.2.2
licences='docs/licence.txt docs/lgpl.txt docs/preamble.txt'

# Of the text editor's hundred lexers the one of XML, and the one of plain text that stands in.
leave_out_lexers() {
  sed -i '/LINK_LEXER(lm/{/lmXML\|lmNull/!d}' ../src/stc/scintilla/src/Catalogue.cxx
  sed -i '/^\twxscintilla_Lex[^.]*\.o/{/LexHTML\|LexNull\|Lexer/!d}' Makefile
}

build() {
  mkdir cross
  cd cross
  # Precompiled headers take more than half of the time away; with them ccache would keep nothing.
  CXX=${CXX#ccache }
  # shellcheck disable=SC2046
  CFLAGS='-O1' CXXFLAGS='-O1' ../configure --host=$host --build="$(dpkg-architecture -qDEB_BUILD_GNU_TYPE)" --prefix="$prefix" \
    --disable-shared --enable-monolithic=no --enable-accessibility --with-cxx=17 --enable-pch \
    --disable-debug_info --disable-debug_flag --disable-dependency-tracking \
    --disable-sys-libs --without-libpng --without-libjpeg --without-libtiff --without-expat \
    --without-zlib --without-liblzma --without-opengl \
    $(printf -- '--disable-%s ' \
      tests webrequest sockets protocol ipc fs_archive fs_inet xrc html htmlhelp aui propgrid ribbon \
      richtext mediactrl webview docview printarch svg postscript dbghelp joystick sound help mdi \
      mdidoc debugreport dialupman wizarddlg tarstream zipstream calendar datepick timepick richmsgdlg treelist \
      animatectrl bannerwindow dirpicker filepicker editablebox hyperlink infobar aboutdlg splash \
      tipdlg progressdlg)
  leave_out_lexers
  make -j"$jobs"
  make install
}
