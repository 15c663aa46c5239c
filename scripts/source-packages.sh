# Upstream sources from Debian's source packages. Sourced after lib.sh by the scripts that build with
# them, which set work (a folder of their own that they remove) and logs.

# The machine's package sources, read as deb-src. They are left as they are: this apt has its lists,
# its cache and its sources in the work folder.
private_apt() {
    apt-get -q -y \
        -o "Dir::Etc::SourceList=$work/apt/sources.list" \
        -o "Dir::Etc::SourceParts=$work/apt/sources.list.d" \
        -o "Dir::State::Lists=$work/apt/lists" \
        -o "Dir::Cache=$work/apt/cache" \
        -o APT::Sandbox::User=root "$@"
}

prepare_source_lists() {
    local file
    mkdir -p "$work/apt/sources.list.d" "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
    : >"$work/apt/sources.list"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -f $file ]] || continue
        sed -n -E 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$file" >>"$work/apt/sources.list"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [[ -f $file ]] || continue
        sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/sources.list.d/${file##*/}"
    done
    quietly "reading the lists of source packages" "$logs/apt-update.log" private_apt update
}

# fetch_source NAME FOLDER
fetch_source() {
    local name=$1 folder=$2 archive
    mkdir -p "$folder" "$work/downloads/$name"
    (
        cd "$work/downloads/$name"
        quietly "downloading $name" "$logs/fetch-$name.log" \
            private_apt source --download-only --tar-only "$name"
    )
    # The upstream archive is all we need; Debian's own part beside it is for packaging.
    archive=$(find "$work/downloads/$name" -name '*.orig.tar.*' ! -name '*.asc' -print -quit)
    [[ -n $archive ]] || die "no upstream archive came for the source package $name"
    tar -xf "$archive" -C "$folder" --strip-components=1
}
