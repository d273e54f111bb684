# shellcheck shell=bash
# What the scripts share: a private X display and a private Wine session, both below build/, started on
# demand and ended with the script. Source it from bash after `set -euo pipefail`, as the other scripts do:
#
#   source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
#   start_session "$build/mingw"
#   wine "$(windows_path build/mingw/Talvenor.exe)"
#
# Nothing outside build/ is touched, and only what was started here is ended.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$repository/build
# shellcheck disable=SC2034 # for the scripts that source this
equipment=$build/mingw/equipment

# Wine translates file names by the locale: in any other than UTF-8 names outside it cannot be opened.
export LC_ALL=C.UTF-8
# Wine's own remarks drown the output of tests.
export WINEDEBUG=-all
# No .NET and no HTML engine (their absence would start a download), no debugger (a crash then ends the
# program at once instead of waiting in a dialog), no menu entries in the user's desktop. cmd.exe may be
# replaced by tests.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d;winemenubuilder.exe=d;cmd.exe=n,b"
export WINEPREFIX=$build/wineprefix
# Debian's Wine 10 keeps its socket below /run/user/<uid>, and where that is missing, as in a container, below TMPDIR:
# whose value it then gives back as memory of its own, and dies at every start.
unset TMPDIR

# The processes to end, by name, in the order they were started.
declare -A own_processes=()
# Put before a command, ends it with this script, even one that is killed.
with_us="setpriv --pdeathsig TERM --"
wine_is_ours=
unfinished_prefix=

# say TEXT...: a line of progress.
say() { printf '%s\n' "$*"; }

# fail TEXT...: ends the script; stop_all follows through the trap.
fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# within SECONDS COMMAND...: repeats the command until it succeeds; fails when it never does.
within() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

# entries PRESET WHAT NAME: what tests/entries.py says of the entries of ctest in this build that the name means.
entries() { ctest --test-dir "$build/$1" --show-only=json-v1 | python3 "$repository/tests/entries.py" "$2" "$3"; }

# windows_path PATH: how a program under Wine calls this file or folder, which need not exist.
windows_path() {
    local full
    full=$(realpath -m -- "$1")
    printf 'Z:%s\n' "${full//\//\\}"
}

# start_session BUILD [OPTION...]: all that a program needs to run here by `wine`: a display, a window manager, the
# prefix and a desktop, which is held by the desktop_holder.exe of this build folder.
#
#   --size WIDTHxHEIGHT   of the display; 1280x1024 unless given
#   --here                the display and the window manager at hand, to watch it
#   --unmanaged           no window manager: Wine draws the frames
#   --frames FOLDER       the window manager with the settings and the themes of this folder, not with the user's
#   --before COMMAND      run before the desktop is held, when it still takes over what is set in the registry
start_session() {
    local folder=$1 size=1280x1024 display=own manager=yes frames='' before=:
    shift
    while (($#)); do
        case $1 in
        --here) display='' manager='' ;;
        --unmanaged) manager='' ;;
        --size) size=$2 && shift ;;
        --frames) frames=$2 && shift ;;
        --before) before=$2 && shift ;;
        *) fail "start_session has no option $1" ;;
        esac
        shift
    done
    if [[ $display ]]; then
        start_display "$size"
    else
        [[ ${DISPLAY:-} ]] || fail "there is no display here (DISPLAY is not set)"
    fi
    if [[ $manager ]]; then start_window_manager "$frames"; fi
    if [[ $display && ! $manager ]]; then
        start_wine N
    else
        start_wine Y
    fi
    "$before"
    hold_desktop "$folder/equipment/desktop_holder.exe"
}

# start_display WIDTHxHEIGHT: a virtual screen of our own, with a number that is free.
start_display() {
    local size=$1 channel number
    # Read and written by us alone: an open that cannot wait, and a read with a deadline.
    channel=$(mktemp -u)
    mkfifo "$channel"
    exec {display_channel}<>"$channel"
    rm "$channel"
    $with_us Xvfb -displayfd "$display_channel" -screen 0 "${size}x24" -nolisten tcp >/dev/null 2>&1 &
    own_processes[display]=$!
    read -r -t 30 -u "$display_channel" number || fail "no virtual display started (Xvfb)"
    exec {display_channel}>&-
    export DISPLAY=:$number
}

# start_window_manager FRAMES: frames and focus as on a desktop. FRAMES is empty or a folder of settings and themes.
start_window_manager() {
    local settings=() started
    if [[ $1 ]]; then settings=(env "XDG_DATA_HOME=$1" "XDG_CONFIG_HOME=$1"); fi
    started=$(mktemp -u)
    $with_us "${settings[@]}" openbox --startup "touch $started" >/dev/null 2>&1 &
    own_processes[window_manager]=$!
    within 30 test -e "$started" || fail "the window manager did not start (openbox)"
    rm "$started"
}

# start_wine MANAGED: the session that every later `wine` of this script joins. With N the windows' frames are Wine's:
# right where no window manager runs, which Wine would otherwise ask in vain, and wait two seconds for with each window
# that closes. With Y they are the window manager's.
start_wine() {
    take_session
    create_prefix
    # A test that was killed may have left its own program in the place of one of Wine's.
    local saved
    for saved in "$WINEPREFIX"/drive_c/windows/{,system32/}*.exe.saved; do
        if [[ -e $saved ]]; then mv -f "$saved" "${saved%.saved}"; fi
    done
    # Or folders of its own, which the next process of the same number would take for empty.
    rm -rf "$WINEPREFIX"/drive_c/users/*/Temp/talvenor-*
    wine_is_ours=yes
    set_registry 'HKCU\Software\Wine\X11 Driver' Managed REG_SZ "$1"
}

# take_session: one script at a time works in the prefix, because the first to end ends the session.
take_session() {
    local lock
    mkdir -p "$build"
    exec {lock}>"$build/session.lock"
    if ! flock --nonblock "$lock"; then
        say "Waiting for another script that uses Wine here..."
        flock --timeout 3600 "$lock" || fail "the other script did not end"
    fi
    # Kept by a process that starts no other, and not by us: Wine's services would inherit it, and they outlive a server
    # that dies.
    $with_us sleep infinity &
    own_processes[session]=$!
    exec {lock}>&-
}

# create_prefix: once; under another name until it is complete, so that a start cut short is no half prefix.
create_prefix() {
    if [[ -d $WINEPREFIX ]]; then return; fi
    say "Making a Wine prefix (once)..."
    local finished=$WINEPREFIX
    unfinished_prefix=$WINEPREFIX.new
    rm -rf "$unfinished_prefix"
    # A home of its own, which stays where it is: the prefix links "Documents" and the like to it, and without
    # them the open dialog has nowhere to begin.
    local home=$finished.home
    mkdir -p "$home"
    export WINEPREFIX=$unfinished_prefix
    HOME=$home wineboot -i >"$build/wineboot.log" 2>&1 ||
        fail "Wine cannot make a prefix; see $build/wineboot.log"
    give_fonts
    wineserver -k || true # it may have ended by itself
    wineserver -w
    export WINEPREFIX=$finished
    mv "$unfinished_prefix" "$WINEPREFIX"
    unfinished_prefix=
}

# give_fonts: without these a window has letters for its caption's buttons, texts cut short and boxes for
# what is not Latin. Debian's Wine does not look into its own font folder; the dialogs' "Segoe UI" is not free,
# Open Sans has nearly its widths; and it has no Chinese or Japanese, which another font then adds.
give_fonts() {
    local replacements='HKCU\Software\Wine\Fonts\Replacements'
    local links='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink'
    ln -s /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    set_registry "$replacements" "Segoe UI" REG_SZ "Open Sans"
    set_registry "$links" "Open Sans" REG_MULTI_SZ "DroidSansFallbackFull.ttf,Droid Sans Fallback"
}

# set_registry KEY NAME TYPE VALUE
set_registry() {
    wine reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null 2>&1 || fail "Wine does not run (reg add $1)"
}

# hold_desktop HOLDER: keeps the desktop between the programs of this session; a window then opens in a tenth
# of a second instead of more than one.
hold_desktop() {
    local line answers
    # Its input ends with us, and so does it.
    coproc HOLDER { exec wine "$1"; }
    own_processes[desktop_holder]=$HOLDER_PID answers=${HOLDER[0]} # bash forgets these when it ends
    read -r -t 120 -u "$answers" line || line=
    if [[ ${line%$'\r'} != ready ]]; then fail "Wine opens no window on display $DISPLAY"; fi
}

# stop_all: ends what this script started. Runs at its end, however that comes.
stop_all() {
    local status=$? name
    trap - EXIT
    # Our own session only: the server is known by its prefix.
    if [[ $wine_is_ours || $unfinished_prefix ]]; then
        wineserver -k >/dev/null 2>&1 || true # it may have ended by itself
        timeout 60 wineserver -w || true
    fi
    for name in "${!own_processes[@]}"; do kill "${own_processes[$name]}" 2>/dev/null || true; done
    wait 2>/dev/null || true
    exit $status
}
trap stop_all EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP
