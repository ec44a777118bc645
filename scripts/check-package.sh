#!/usr/bin/env bash
# Checks the two built Debian packages: the files a user needs are in each, under the standard
# paths; the control data names the package, its version and its dependencies (the command line
# never pulls in Qt); and lintian finds no error and no warning.
# Usage: scripts/check-package.sh halvard600_VERSION_ARCH.deb halvard600-gui_VERSION_ARCH.deb
set -euo pipefail
cli=$1
gui=$2
status=0
version=$(sed -n 's/^project(halvard600 VERSION \([0-9.]*\).*/\1/p' "$(dirname "$0")/../CMakeLists.txt")

fail() {
  echo "$1"
  status=1
}

# has DEB PATH...: every PATH is in DEB.
has() {
  local deb=$1 contents path
  shift
  contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
  for path in "$@"; do
    grep -qxF "$path" <<<"$contents" || fail "missing from $deb: $path"
  done
  if grep -q -e '^./usr/include' -e 'tests' -e 'bench' <<<"$contents"; then
    fail "test, benchmark or header files in $deb"
  fi
}

# control DEB FIELD VALUE: the control field is VALUE.
control() {
  [ "$(dpkg-deb -f "$1" "$2")" = "$3" ] || fail "$1: $2 is '$(dpkg-deb -f "$1" "$2")', not '$3'"
}

has "$cli" \
  ./usr/bin/halvard \
  ./usr/share/man/man1/halvard.1.gz \
  ./usr/share/halvard600/samples/data/^IXIC.txt \
  ./usr/share/halvard600/samples/watchlists/sample.inc \
  ./usr/share/doc/halvard600/README.md \
  ./usr/share/doc/halvard600/copyright \
  ./usr/share/doc/halvard600/changelog.gz
samples=$(dpkg-deb -c "$cli" | awk '{print $6}' | grep -c '^./usr/share/halvard600/samples/data/.*\.txt$' || true)
[ "$samples" -eq 41 ] || fail "expected 41 sample price files, found $samples"
dpkg-deb -c "$cli" | grep -q -e 'halvard-gui' -e 'applications/' && fail "$cli holds the desktop program"
control "$cli" Package halvard600
control "$cli" Version "$version"
depends=$(dpkg-deb -f "$cli" Depends)
for lib in libcurl libsqlite3; do
  grep -q "$lib" <<<"$depends" || fail "$cli: Depends lacks $lib: $depends"
done
grep -qi 'qt' <<<"$depends" && fail "$cli: the command line depends on Qt: $depends"

has "$gui" \
  ./usr/bin/halvard-gui \
  ./usr/share/man/man1/halvard-gui.1.gz \
  ./usr/share/applications/halvard600.desktop \
  ./usr/share/icons/hicolor/scalable/apps/halvard600.svg \
  ./usr/share/doc/halvard600-gui/copyright \
  ./usr/share/doc/halvard600-gui/changelog.gz
control "$gui" Package halvard600-gui
control "$gui" Version "$version"
depends=$(dpkg-deb -f "$gui" Depends)
for lib in libqt6widgets6 fonts-dejavu-core "halvard600 (= $version)"; do
  grep -qF "$lib" <<<"$depends" || fail "$gui: Depends lacks $lib: $depends"
done

# Every tag at warning level or above fails; lintian's informational tags do not.
if ! lintian --fail-on error,warning "$cli" "$gui"; then
  fail "lintian reports errors or warnings"
fi

[ $status -eq 0 ] && echo "$cli, $gui: contents, control data and lintian as expected"
exit $status
