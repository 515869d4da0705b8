#!/bin/sh
# Installs the package in a clean Debian 12 and opens the sample NoteBook there, under Xvfb. Needs root, debootstrap and
# the network; takes some minutes. Usage: install_in_chroot.sh FILE.deb FOLDER   (the folder is made, and kept)
set -eu
package=$1
folder=$2
[ -d "$folder" ] || debootstrap --variant=minbase bookworm "$folder" >/dev/null
cp "$package" "$folder/root/lorebinder.deb"
inside() {
    chroot "$folder" env LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}
mountpoint -q "$folder/proc" || mount -t proc proc "$folder/proc"
trap 'umount "$folder/proc"' EXIT
inside sh -c "apt-get update -qq && apt-get install -y -qq /root/lorebinder.deb xvfb xauth procps >/dev/null 2>&1"
inside lorebinder-cli --version
inside rm -rf /root/data
inside lorebinder-cli --data /root/data sample
# A first run would start the reminder agent, which would stay.
printf '\n[Options]\nProgVersion=11.56\n' >>"$folder/root/data/settings.ini"
inside sh -c '
    xvfb-run -a lorebinder --data /root/data --ready-line 2>/root/ready &
    for second in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
        sleep 1
        [ -s /root/ready ] && break
    done
    cat /root/ready
    pkill -x lorebinder
    grep -q . /root/ready'
echo "installed and started"
