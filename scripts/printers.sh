# A print spooler of our own for tests: a private CUPS server with two queues that print into files,
# and a fresh Wine prefix that knows no others. Nothing of the system's spooler is touched. Sourced
# after lib.sh; a running spooler is known by its folder, PLATEN_TEST_PRINTERS:
#   cups.sock      where CUPS clients find it
#   out/           plotter.prn and office.ps, what the queues printed last
#   spool/         the jobs as they arrived
#   wineprefix     the Wine prefix

packages_printers=(cups cups-client cups-filters)

printers_cupsd=/usr/sbin/cupsd
printers_lpadmin=/usr/sbin/lpadmin
# One file for each spooler of this checkout, so that one whose starter was killed is found again.
printers_records=$root/build/windows/test-printers

# What programs need to see the queues.
printers_environment() {
    [[ -d ${PLATEN_TEST_PRINTERS:-} ]] ||
        die "the test printers are not running; do one of
  ./test --windows                         which starts them for its tests
  ./run --with-test-printers --windows ... which starts them for one command
  eval \"\$(scripts/test-printers start)\"    and, afterwards, scripts/test-printers stop"
    export CUPS_SERVER=$PLATEN_TEST_PRINTERS/cups.sock
    wine_environment
    export WINEPREFIX=$PLATEN_TEST_PRINTERS/wineprefix
}

# Starts a spooler, which belongs to this script, and exports PLATEN_TEST_PRINTERS; that is set even
# when starting fails, so that printers_stop can clean up.
printers_start() {
    local folder
    mkdir -p "$printers_records"
    printers_sweep
    # Sockets have short names, and the filters, which run as another user, have to get there.
    folder=$(mktemp -d /tmp/platen-printers.XXXXXX)
    export PLATEN_TEST_PRINTERS=$folder
    printers_record "$folder" $$
    chmod 711 "$folder"
    mkdir "$folder"/{etc,state,cache,spool,tmp,out}
    # The filters keep their temporary files there, as another user.
    chmod 1777 "$folder/tmp"
    printers_configure "$folder"
    printers_serve "$folder"
    printers_add_queues "$folder"
    printers_wine_prefix "$folder"
}

# Lets the spooler live on without this script.
printers_keep() {
    printers_record "$PLATEN_TEST_PRINTERS" ''
}

# printers_record FOLDER OWNER
printers_record() {
    printf '%s\n' "$2" >"$printers_records.new.$$"
    mv "$printers_records.new.$$" "$printers_records/${1##*/}"
}

# Ends the spooler of PLATEN_TEST_PRINTERS and everything that uses its Wine prefix.
printers_stop() {
    local folder=${PLATEN_TEST_PRINTERS:-}
    [[ -n $folder ]] || return 0
    unset PLATEN_TEST_PRINTERS
    printers_remove "$folder"
}

printers_configure() {
    local folder=$1
    cat >"$folder/etc/cupsd.conf" <<END_OF_SETTINGS
Listen $folder/cups.sock
DefaultAuthType None
Browsing Off
WebInterface No
PreserveJobFiles Yes
DirtyCleanInterval 0
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
END_OF_SETTINGS
    cat >"$folder/etc/cups-files.conf" <<END_OF_SETTINGS
ServerRoot $folder/etc
StateDir $folder/state
CacheDir $folder/cache
RequestRoot $folder/spool
TempDir $folder/tmp
AccessLog $folder/access.log
ErrorLog $folder/error.log
PageLog $folder/page.log
FileDevice Yes
SystemGroup root
END_OF_SETTINGS
}

# Starts the server and waits until it answers.
printers_serve() {
    local folder=$1 server waited
    [[ -x $printers_cupsd ]] || die "the test printers need $printers_cupsd (package cups)"
    "$printers_cupsd" -f -c "$folder/etc/cupsd.conf" -s "$folder/etc/cups-files.conf" \
        </dev/null >"$folder/cupsd.out" 2>&1 &
    server=$!
    printf '%s\n' "$server" >"$folder/cupsd.pid"
    for ((waited = 0; waited < 300; waited++)); do
        [[ ! -S $folder/cups.sock ]] || return 0
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    printers_complain "$folder" "the private CUPS server does not start (it needs a user lp and" \
        "the right to write below /tmp)"
}

printers_add_queues() {
    local folder=$1
    printers_add "$folder" Plotter 'Roll plotter' plotter.prn \
        drv:///cupsfilters.drv/dsgnjt1050cpcl.ppd
    printers_add "$folder" Office 'Office printer' office.ps drv:///sample.drv/generic.ppd
    CUPS_SERVER=$folder/cups.sock "$printers_lpadmin" -d Office >>"$folder/lpadmin.out" 2>&1 ||
        printers_complain "$folder" "no default queue can be set"
}

# printers_add FOLDER QUEUE COMMENT FILE DRIVER
printers_add() {
    CUPS_SERVER=$1/cups.sock "$printers_lpadmin" -p "$2" -E -D "$3" -v "file://$1/out/$4" -m "$5" \
        >>"$1/lpadmin.out" 2>&1 ||
        printers_complain "$1" "the queue $2 cannot be made with the driver $5"
}

# Ends the script with the spooler's own words; its logs are kept.
printers_complain() {
    local folder=$1 log
    shift
    say "error: $*:"
    for log in cupsd.out error.log lpadmin.out; do
        [[ ! -s $folder/$log ]] || tail -n 20 "$folder/$log" | sed 's/^/  | /' >&2
    done
    exit 1
}

# Wine keeps what it knows about queues in the registry. The prefix shares its files with the usual
# one of this checkout, but has a registry that was never asked for a printer.
printers_wine_prefix() {
    local folder=$1 prefix
    wine_environment
    wine_prefix
    prefix=$(mktemp -d "$root/build/windows/wineprefix-printers.XXXXXX")
    ln -s "$prefix" "$folder/wineprefix"
    cp -al "$WINEPREFIX/drive_c" "$prefix/drive_c"
    cp -a "$WINEPREFIX/dosdevices" "$WINEPREFIX/pristine/." "$prefix"
    (
        printers_environment
        wineserver -p
        wine_keep
    )
}

# printers_remove FOLDER
printers_remove() {
    local folder=$1 server prefix
    server=$(cat "$folder/cupsd.pid" 2>/dev/null || true)
    prefix=$(readlink "$folder/wineprefix" || true)
    if [[ -n $prefix ]]; then
        (
            wine_environment
            WINEPREFIX=$prefix wineserver -k -w 2>/dev/null || true
        )
        [[ $prefix != "$root"/build/windows/wineprefix-printers.* ]] || rm -rf "$prefix"
    fi
    if printers_serves "$server" "$folder"; then
        kill "$server" 2>/dev/null || true
        # Its filters end with it; the folder can go once nothing writes there any more.
        while printers_serves "$server" "$folder"; do sleep 0.1; done
    fi
    if [[ $folder == /tmp/platen-printers.* ]]; then
        mkdir -p "$root/build/logs/test-printers"
        cp "$folder"/*.log "$folder"/*.out "$root/build/logs/test-printers" 2>/dev/null || true
        rm -rf "$folder"
    fi
    rm -f "$printers_records/${folder##*/}"
}

# Whether a process is still the server of a folder: numbers of processes are used again.
# printers_serves PROCESS FOLDER
printers_serves() {
    [[ -n $1 ]] && tr '\0' ' ' 2>/dev/null <"/proc/$1/cmdline" | grep -q -F "$2/etc/cupsd.conf"
}

# Removes spoolers of this checkout whose owner is gone, or whose server if they have none.
printers_sweep() {
    local record folder owner
    for record in "$printers_records"/*; do
        [[ -f $record ]] || continue
        folder=/tmp/${record##*/}
        owner=$(cat "$record")
        if [[ -n $owner ]]; then
            ! kill -0 "$owner" 2>/dev/null || continue
        elif printers_serves "$(cat "$folder/cupsd.pid" 2>/dev/null || true)" "$folder"; then
            continue
        fi
        printers_remove "$folder"
    done
}
