#!/usr/bin/env bash
# Runs qBittorrent in the background for this user, the way Quillo connects to it, or removes it.
#   qbt-daemon.sh install --arch ARCH --port PORT --username NAME --password-hash HASH
#   qbt-daemon.sh uninstall
# Both can run again safely. Downloads and qBittorrent's own settings are never removed.
set -euo pipefail

data_home=${XDG_DATA_HOME:-$HOME/.local/share}
config_home=${XDG_CONFIG_HOME:-$HOME/.config}
state="$data_home/quillo/qbittorrent"
profile="$state/profile"
conf="$profile/qBittorrent/config/qBittorrent.conf"
launcher="$state/run-qbittorrent"
pidfile="$state/qbittorrent-nox.pid"
logfile="$state/qbittorrent-nox.log"
package_marker="$state/installed-by-quillo"
unit_name=quillo-qbittorrent.service
unit="$config_home/systemd/user/$unit_name"
autostart="$config_home/autostart/quillo-qbittorrent.desktop"
downloads="$HOME/Torrents"

say() { printf '%s\n' "$*"; }
fail() {
    printf 'Error: %s\n' "$*" >&2
    exit 1
}
usage() {
    fail "usage: $0 install --arch ARCH --port PORT --username NAME --password-hash HASH | $0 uninstall"
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

has_user_systemd() {
    command -v systemctl >/dev/null && systemctl --user show-environment >/dev/null 2>&1
}

# Sets KEY in [SECTION] of an INI file, keeping every other line. Values pass through the
# environment: awk would read backslashes in -v values as escapes.
set_setting() {
    local section=$1 key=$2 value=$3 tmp
    tmp=$(mktemp "$conf.XXXXXX")
    section="[$section]" key="$key" value="$value" awk '
        function emit() { print ENVIRON["key"] "=" ENVIRON["value"]; done = 1 }
        $0 == ENVIRON["section"] { inside = 1; print; next }
        /^\[/ { if (inside && !done) emit(); inside = 0 }
        inside && index($0, ENVIRON["key"] "=") == 1 { if (!done) emit(); next }
        { print }
        END { if (!done) { if (!inside) print "\n" ENVIRON["section"]; emit() } }
    ' "$conf" >"$tmp"
    mv "$tmp" "$conf"
}

# The pid file names a process only while it is still our qbittorrent-nox.
running_pid() {
    [[ -f $pidfile ]] || return 1
    local pid
    pid=$(<"$pidfile")
    [[ $pid =~ ^[0-9]+$ ]] || return 1
    tr '\0' ' ' 2>/dev/null <"/proc/$pid/cmdline" | grep -qF -- "--profile=$profile" || return 1
    printf '%s\n' "$pid"
}

stop_daemon() {
    if [[ -f $unit ]] && has_user_systemd; then
        systemctl --user stop "$unit_name" 2>/dev/null || true
    fi
    local pid
    if pid=$(running_pid); then
        say "Stopping qBittorrent (process $pid)…"
        kill -TERM "$pid" 2>/dev/null || true
        for _ in $(seq 1 60); do
            kill -0 "$pid" 2>/dev/null || break
            sleep 0.5
        done
        if running_pid >/dev/null; then
            kill -KILL "$pid" 2>/dev/null || true
        fi
    fi
    rm -f "$pidfile"
}

ensure_qbittorrent() {
    if command -v qbittorrent-nox >/dev/null; then
        say "Using $(command -v qbittorrent-nox)."
        return
    fi
    say "qbittorrent-nox is not installed; installing it with the package manager (sudo may ask for your password)."
    local manager
    if command -v apt-get >/dev/null; then
        manager=apt-get
        as_root apt-get install -y qbittorrent-nox
    elif command -v dnf >/dev/null; then
        manager=dnf
        as_root dnf install -y qbittorrent-nox
    elif command -v pacman >/dev/null; then
        manager=pacman
        as_root pacman -S --needed --noconfirm qbittorrent-nox
    elif command -v zypper >/dev/null; then
        manager=zypper
        as_root zypper --non-interactive install qbittorrent-nox
    else
        fail "qbittorrent-nox is not installed and no known package manager was found. Install qbittorrent-nox, then try again."
    fi
    command -v qbittorrent-nox >/dev/null || fail "The package manager did not install qbittorrent-nox."
    printf '%s\n' "$manager" >"$package_marker"
}

remove_package() {
    [[ -f $package_marker ]] || {
        say "qbittorrent-nox was not installed by Quillo; the package stays."
        return
    }
    local manager
    manager=$(<"$package_marker")
    say "Removing the qbittorrent-nox package that Quillo installed (sudo may ask for your password)."
    case $manager in
        apt-get) as_root apt-get remove -y qbittorrent-nox ;;
        dnf) as_root dnf remove -y qbittorrent-nox ;;
        pacman) as_root pacman -R --noconfirm qbittorrent-nox ;;
        zypper) as_root zypper --non-interactive remove qbittorrent-nox ;;
        *) fail "Unknown package manager recorded in $package_marker." ;;
    esac
    rm -f "$package_marker"
}

write_profile() {
    local port=$1 username=$2 hash=$3
    mkdir -p "$(dirname "$conf")" "$downloads"
    touch "$conf"
    set_setting LegalNotice Accepted true
    set_setting Preferences 'WebUI\Address' 127.0.0.1
    set_setting Preferences 'WebUI\Port' "$port"
    set_setting Preferences 'WebUI\Username' "$username"
    set_setting Preferences 'WebUI\Password_PBKDF2' "\"$hash\""
    set_setting BitTorrent 'Session\DefaultSavePath' "$downloads"
    say "Settings written to $conf (WebUI on 127.0.0.1:$port only, downloads to $downloads)."
}

write_launcher() {
    {
        printf '#!/usr/bin/env bash\n'
        printf 'echo $$ >%q\n' "$pidfile"
        printf 'exec %q --profile=%q\n' "$(command -v qbittorrent-nox)" "$profile"
    } >"$launcher"
    chmod 755 "$launcher"
}

# systemd unit files and desktop entries both read "..." with backslash escapes; both expand %.
quoted_for_entry() {
    local text=${1//\\/\\\\}
    text=${text//\"/\\\"}
    printf '"%s"' "${text//%/%%}"
}

start_at_login() {
    if has_user_systemd; then
        mkdir -p "$(dirname "$unit")"
        printf '[Unit]\nDescription=qBittorrent for Quillo\n\n[Service]\nExecStart=%s\nRestart=on-failure\n\n[Install]\nWantedBy=default.target\n' \
            "$(quoted_for_entry "$launcher")" >"$unit"
        systemctl --user daemon-reload
        systemctl --user enable --now "$unit_name"
        systemctl --user restart "$unit_name"
        say "qBittorrent starts at login through the systemd user unit $unit_name, and runs now."
    else
        mkdir -p "$(dirname "$autostart")"
        local exec
        exec=$(quoted_for_entry "$launcher")
        printf '[Desktop Entry]\nType=Application\nName=qBittorrent for Quillo\nExec=%s\nTerminal=false\nNoDisplay=true\n' \
            "${exec//\\/\\\\}" >"$autostart"
        setsid -f "$launcher" >"$logfile" 2>&1 </dev/null
        say "qBittorrent starts at login through $autostart, and runs now."
    fi
}

install() {
    local arch="" port="" username="" hash=""
    while [[ $# -gt 0 ]]; do
        [[ $# -ge 2 ]] || usage
        case $1 in
            --arch) arch=$2 ;;
            --port) port=$2 ;;
            --username) username=$2 ;;
            --password-hash) hash=$2 ;;
            *) usage ;;
        esac
        shift 2
    done
    [[ $arch == arm64 || $arch == x86_64 ]] || fail "Unknown processor '$arch'."
    [[ $port =~ ^[0-9]+$ && $port -ge 1 && $port -le 65535 ]] || fail "Invalid port '$port'."
    [[ -n $username ]] || fail "No username given."
    [[ $hash == @ByteArray\(*:*\) ]] || fail "The password hash is not in qBittorrent's form."

    say "Installing qBittorrent for Quillo on port $port."
    mkdir -p "$state"
    ensure_qbittorrent
    # A running qBittorrent writes its settings back when it stops: stop it before changing them.
    stop_daemon
    write_profile "$port" "$username" "$hash"
    write_launcher
    start_at_login
    say "Done. Quillo connects to qBittorrent as soon as it answers; this window can be closed."
}

uninstall() {
    [[ $# -eq 0 ]] || usage
    say "Removing qBittorrent for Quillo."
    stop_daemon
    if [[ -f $unit ]]; then
        if has_user_systemd; then
            systemctl --user disable "$unit_name" 2>/dev/null || true
        fi
        rm -f "$unit"
        has_user_systemd && systemctl --user daemon-reload
        say "Removed the systemd user unit $unit_name."
    fi
    if [[ -f $autostart ]]; then
        rm -f "$autostart"
        say "Removed the login entry $autostart."
    fi
    rm -f "$launcher" "$logfile"
    remove_package
    say "Downloaded files in $downloads and qBittorrent's settings in $profile are kept."
    say "Done; this window can be closed."
}

case ${1:-} in
    install) shift && install "$@" ;;
    uninstall) shift && uninstall "$@" ;;
    *) usage ;;
esac
