#!/bin/sh
# What the Debian package brings: programs, a menu entry, project files that a click opens, manual
# pages as systems keep them. Where lintian is installed, it finds no fault.
# usage: package.sh BUILD-FOLDER
set -eu
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "package.sh: $*" >&2
  exit 1
}

(cd "$build" && cpack -G DEB -B "$work/made") >"$work/log" 2>&1 || {
  cat "$work/log" >&2
  fail "cpack failed"
}
package=$(echo "$work"/made/*.deb)
[ -f "$package" ] || fail "there is no package"
dpkg-deb -x "$package" "$work/root"

for file in bin/corvane bin/corvane-author libexec/corvane/conspawn \
  lib/corvane/modules/corvane-decoders.so lib/corvane/modules/corvane-sources.so \
  lib/corvane/modules/corvane-letters.so lib/corvane/modules/corvane-sound.so \
  applications/corvane.desktop mime/packages/corvane.xml \
  icons/hicolor/scalable/apps/corvane.svg \
  icons/hicolor/scalable/mimetypes/application-x-corvane-project.svg \
  man/man1/corvane.1.gz man/man1/corvane-author.1.gz man/man1/conspawn.1.gz \
  doc/corvane/copyright doc/corvane/changelog.gz doc/corvane/README.md doc/corvane/NEWS.md \
  doc/corvane/guide/index.html doc/corvane/guide/main.html doc/corvane/guide/keys.html \
  doc/corvane/guide/guide.css; do
  [ -s "$work/root/usr/$file" ] || [ -s "$work/root/usr/share/$file" ] || fail "$file is not in it"
done
[ -z "$(find "$work/root" -name '*.1')" ] || fail "a manual page is not compressed"

share=$work/root/usr/share
for page in "$share"/man/man1/*.gz "$share"/doc/corvane/changelog.gz; do
  gzip -t "$page" || fail "$page is damaged"
done
grep -q '^Exec=corvane %f$' "$share/applications/corvane.desktop" || fail "the menu entry starts something else"
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$share/applications/corvane.desktop" || fail "the menu entry is not valid"
fi
if command -v update-mime-database >/dev/null; then
  update-mime-database "$share/mime" 2>/dev/null || fail "the MIME type is not valid"
  grep -q 'application/x-corvane-project:\*\.cvp' "$share/mime/globs" || fail "*.cvp has no type"
fi

# An installed program finds its parts.
mkdir "$work/home"
printed=$(HOME=$work/home "$work/root/usr/bin/corvane-author" --version) || fail "it does not start"
[ "$printed" = 'corvane-author (Corvane 0.997 - 1/2/2005)' ] || fail "it says \"$printed\""
# The designs of menus, too: it says which there are.
printed=$(HOME=$work/home "$work/root/usr/bin/corvane-author" --make-menus none film.cvp 2>&1) || true
case $printed in
  *"There is no design \"none\"; there are "*amber*) ;;
  *) fail "it finds no designs: \"$printed\"" ;;
esac

if command -v lintian >/dev/null; then
  lintian --allow-root --fail-on error,warning "$package" >&2 || fail "lintian finds fault with it"
fi
