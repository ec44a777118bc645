#!/usr/bin/env bash
# Checks a built Debian package: the files a user needs are in it, under the standard paths,
# and the control data names the package, its version and its dependencies.
# Usage: scripts/check-package.sh halvard600_VERSION_ARCH.deb
set -euo pipefail
deb=$1
contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
status=0
for path in \
  ./usr/bin/halvard \
  ./usr/bin/halvard-gui \
  ./usr/share/applications/halvard600.desktop \
  ./usr/share/icons/hicolor/scalable/apps/halvard600.svg \
  ./usr/share/halvard600/samples/data/^IXIC.txt \
  ./usr/share/halvard600/samples/watchlists/sample.inc \
  ./usr/share/doc/halvard600/README.md; do
  if ! grep -qxF "$path" <<<"$contents"; then
    echo "missing from $deb: $path"
    status=1
  fi
done
samples=$(grep -c '^./usr/share/halvard600/samples/data/.*\.txt$' <<<"$contents" || true)
[ "$samples" -eq 41 ] || { echo "expected 41 sample price files, found $samples"; status=1; }
if grep -q -e '^./usr/include' -e 'tests' -e 'bench' <<<"$contents"; then
  echo "test, benchmark or header files in $deb"
  status=1
fi
depends=$(dpkg-deb -f "$deb" Depends)
for lib in libcurl libsqlite3 libqt6widgets6; do
  grep -q "$lib" <<<"$depends" || { echo "Depends lacks $lib: $depends"; status=1; }
done
[ "$(dpkg-deb -f "$deb" Version)" = "$(sed -n 's/^project(halvard600 VERSION \([0-9.]*\).*/\1/p' "$(dirname "$0")/../CMakeLists.txt")" ] ||
  { echo "the package version is not the project's"; status=1; }
[ $status -eq 0 ] && echo "$deb: contents and control data as expected"
exit $status
