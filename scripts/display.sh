# A display of our own for tests: an X server without a screen, on a number that is free. Sourced
# after lib.sh.

packages_display=(xvfb fonts-open-sans librsvg2-common)

# Starts the server and exports DISPLAY; display_stop ends it.
display_start() {
    local folder waited
    folder=$(mktemp -d "$root/build/display.XXXXXX")
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset \
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
        rm -rf "$folder"
        display_stop
        return 1
    fi
    DISPLAY=:$(<"$folder/number")
    export DISPLAY
    rm -rf "$folder"
    # The toolkit must look the same for everybody, and talk to nobody else's session.
    unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
    export GDK_BACKEND=x11 GTK_THEME=Adwaita GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1 GTK_A11Y=none
}

display_stop() {
    [[ -n ${display_server:-} ]] || return 0
    kill "$display_server" 2>/dev/null || true
    wait "$display_server" 2>/dev/null || true
    display_server=
}
