#!/bin/sh
# Makes the Debian package in build/release and checks it. Installs through apt what is missing.
set -eu
cd "$(dirname "$0")/.."
packaging/install-packages.sh packaging/packages.txt packaging/package-packages.txt
packaging/build.sh
(cd build/release && rm -f lorebinder_*.deb && cpack -G DEB >cpack.log 2>&1) || { cat build/release/cpack.log; exit 1; }
package=$(ls build/release/lorebinder_*.deb)

echo "Checking $package ..."
desktop-file-validate packaging/linux/*.desktop
appstreamcli validate --no-net packaging/linux/*.metainfo.xml >/dev/null
xmllint --noout packaging/linux/*.xml
for page in packaging/man/*.1; do
    [ -z "$(groff -man -ww -Tutf8 "$page" 2>&1 >/dev/null)" ] || { echo "faults in $page"; exit 1; }
done
lintian --allow-root --fail-on error "$package"
python3 tests/package/package_test.py "$package"
