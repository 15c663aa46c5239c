# A display of our own for tests: an X server without a screen, on a number that is free, and a window
# manager, which draws captions. Sourced after lib.sh.

packages_display=(xvfb blackbox fonts-open-sans librsvg2-common)

# Starts the server and exports DISPLAY, and PLATEN_TEST_SCREEN: a file with what the display shows
# at every moment, as an X window dump. display_stop ends it.
display_start() {
    local folder waited
    folder=$(mktemp -d "$root/build/display.XXXXXX")
    display_folder=$folder
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset -fbdir "$folder" \
        </dev/null >"$folder/log" 2>&1 3>"$folder/number" &
    display_server=$!
    for ((waited = 0; waited < 300; waited++)); do
        [[ ! -s $folder/number ]] || break
        kill -0 "$display_server" 2>/dev/null || break
        sleep 0.1
    done
    if [[ ! -s $folder/number ]]; then
        say "error: Xvfb (package xvfb) does not start:"
        sed 's/^/  | /' "$folder/log" >&2
        display_stop
        return 1
    fi
    DISPLAY=:$(<"$folder/number")
    PLATEN_TEST_SCREEN=$folder/Xvfb_screen0
    export DISPLAY PLATEN_TEST_SCREEN
    # The toolkit must look the same for everybody, and talk to nobody else's session.
    unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
    export GDK_BACKEND=x11 GTK_THEME=Adwaita GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1 GTK_A11Y=none
    cat >"$folder/blackboxrc" <<'END'
session.screen0.enableToolbar: False
session.screen0.focusModel: ClickToFocus
session.screen0.focusNewWindows: True
session.screen0.focusLastWindow: True
session.styleFile: /usr/share/blackbox/styles/Gray
END
    blackbox -rc "$folder/blackboxrc" </dev/null >"$folder/manager.log" 2>&1 &
    display_manager=$!
}

display_stop() {
    local process
    for process in ${display_manager:-} ${display_server:-}; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    display_manager=
    display_server=
    [[ -z ${display_folder:-} ]] || rm -rf "$display_folder"
    display_folder=
}
