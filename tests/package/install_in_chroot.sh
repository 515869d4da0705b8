#!/bin/sh
# Installs the package in a clean Debian 12 and opens the sample NoteBook there, under Xvfb, as on a first run, which
# starts the reminder agent too. Needs root, debootstrap and the network; takes some minutes. What the screen showed lies
# in FOLDER/root/screen.xwd then. Usage: install_in_chroot.sh FILE.deb FOLDER   (the folder is made, and kept)
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
inside sh -c "apt-get update -qq &&
    apt-get install -y -qq --reinstall /root/lorebinder.deb xvfb procps >/root/apt.log 2>&1" ||
    { cat "$folder/root/apt.log"; exit 1; }
inside lorebinder-cli --version
inside rm -rf /root/data /root/.config/autostart
inside lorebinder-cli --data /root/data sample
inside sh -c '
    export DISPLAY=:93
    Xvfb $DISPLAY -screen 0 1280x800x24 -nolisten tcp -fbdir /root >/dev/null 2>&1 &
    server=$!
    sleep 2
    lorebinder --data /root/data --ready-line 2>/root/ready &
    program=$!
    for second in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
        sleep 1
        grep -q ready /root/ready && break
    done
    sleep 3
    cp /root/Xvfb_screen0 /root/screen.xwd
    cat /root/ready
    agent=$(pgrep -f "^/usr/lib/lorebinder/LBAgent .*/root/data" || pgrep -f ^/usr/lib/lorebinder/LBAgent || true)
    grep -H Hidden= /etc/xdg/autostart/LBAgent.desktop
    grep -H Exec= /root/.config/autostart/LBAgent*.desktop
    kill $program $agent $server
    wait
    grep -q ready /root/ready && [ -n "$agent" ]'
echo "installed and started, with the agent"
