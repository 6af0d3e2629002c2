#!/usr/bin/env bash
# qbt-daemon.sh on a machine without qbittorrent-nox: install asks the package manager (through
# sudo) for it and remembers that it did; uninstall removes the package only then. The package
# manager, sudo and the daemon are stand-ins on a PATH that otherwise has every tool but the real
# qbittorrent-nox.
set -euo pipefail
script=$1
work=$(mktemp -d)
trap 'kill "$(cat "$work/home/.local/share/quillo/qbittorrent/qbittorrent-nox.pid" 2>/dev/null)" 2>/dev/null || true; rm -rf "$work"' EXIT
mkdir -p "$work/tools" "$work/stand-ins" "$work/home"
for tool in /usr/bin/* /bin/*; do
    name=${tool##*/}
    [[ $name == qbittorrent-nox || -e $work/tools/$name ]] || ln -s "$tool" "$work/tools/$name"
done
calls="$work/calls"
cat >"$work/stand-ins/sudo" <<STUB
#!/bin/sh
echo "sudo \$*" >>"$calls"
exec "\$@"
STUB
# The package manager "installs" a daemon that only waits, under the real one's name.
cat >"$work/stand-ins/apt-get" <<STUB
#!/bin/sh
echo "apt-get \$*" >>"$calls"
case "\$1" in
install) printf '#!/bin/sh\nwhile :; do sleep 1; done\n' >"$work/stand-ins/qbittorrent-nox"
         chmod +x "$work/stand-ins/qbittorrent-nox" ;;
remove) rm -f "$work/stand-ins/qbittorrent-nox" ;;
esac
STUB
printf '#!/bin/sh\nexit 1\n' >"$work/stand-ins/systemctl" # no user systemd: the autostart path
chmod +x "$work/stand-ins/"*

run() {
    env -i HOME="$work/home" PATH="$work/stand-ins:$work/tools" XDG_RUNTIME_DIR= \
        bash "$script" "$@"
}
fail() {
    echo "FAIL: $*" >&2
    echo "calls:" >&2
    cat "$calls" >&2 || true
    exit 1
}

# Not as root: sudo must be asked.
if [[ $(id -u) -eq 0 ]]; then
    run() {
        env -i HOME="$work/home" PATH="$work/stand-ins:$work/tools" XDG_RUNTIME_DIR= \
            setpriv --reuid=nobody --regid=nogroup --clear-groups bash "$script" "$@"
    }
    chown -R nobody:nogroup "$work"
    chmod 755 "$work"
fi

run install --arch x86_64 --port 8097 --username quillo --password-hash '@ByteArray(c2FsdA==:a2V5)' >/dev/null
grep -qx 'sudo apt-get install -y qbittorrent-nox' "$calls" || fail "install did not ask apt-get through sudo"
state="$work/home/.local/share/quillo/qbittorrent"
[[ $(cat "$state/installed-by-quillo") == apt-get ]] || fail "install did not remember the package manager"
[[ -f $work/home/.config/autostart/quillo-qbittorrent.desktop ]] || fail "no autostart entry"
for _ in $(seq 1 50); do [[ -s $state/qbittorrent-nox.pid ]] && break; sleep 0.1; done
kill -0 "$(cat "$state/qbittorrent-nox.pid")" || fail "the daemon was not started"

# Installing again finds it installed: the package manager is not asked twice.
run install --arch x86_64 --port 8097 --username quillo --password-hash '@ByteArray(c2FsdA==:a2V5)' >/dev/null
[[ $(grep -c '^apt-get install' "$calls") -eq 1 ]] || fail "the package was installed twice"

run uninstall >/dev/null
grep -qx 'sudo apt-get remove -y qbittorrent-nox' "$calls" || fail "uninstall did not remove the package"
[[ ! -e $state/installed-by-quillo ]] || fail "the marker stayed"
[[ ! -e $work/home/.config/autostart/quillo-qbittorrent.desktop ]] || fail "the autostart entry stayed"

# A package Quillo did not install is never removed.
: >"$calls"
printf '#!/bin/sh\nwhile :; do sleep 1; done\n' >"$work/stand-ins/qbittorrent-nox"
chmod +x "$work/stand-ins/qbittorrent-nox"
run install --arch x86_64 --port 8097 --username quillo --password-hash '@ByteArray(c2FsdA==:a2V5)' >/dev/null
run uninstall >/dev/null
! grep -q apt-get "$calls" || fail "a package Quillo did not install was touched"
echo "PASS"
