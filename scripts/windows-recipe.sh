# How the Windows libraries are built. Sourced by scripts/windows-deps.sh.
#
# The folder they are kept in is named after the content of this file and of the toolchain file, so
# any change here builds them all anew: what is not recipe (locks, progress, downloads) stays out.
#
# Called with: fetch_source NAME FOLDER   unpacks the upstream source of a Debian source package
#              build_project LABEL SOURCE PREFIX CMAKE-ARGUMENTS...   configures, builds, installs

# Upstream archives that Debian carries as source packages.
windows_source_packages=(expat libpng1.6 libdeflate minizip libmd pixman cairo benchmark wxwidgets3.2)

# Header-only libraries, by their folder in /usr/include. They are copied out of it one by one:
# /usr/include itself on an include path would mix this machine's C library into Windows programs.
windows_header_only=(nlohmann CLI rapidjson)

# build_windows_libraries SOURCES PREFIX
build_windows_libraries() {
    local sources=$1 prefix=$2 name

    mkdir -p "$prefix/header-only/include"
    for name in "${windows_header_only[@]}"; do
        cp -rL "/usr/include/$name" "$prefix/header-only/include/$name"
    done

    build_project googletest /usr/src/googletest "$prefix" \
        -DBUILD_GMOCK=ON -Dgtest_disable_pthreads=OFF

    for name in "${windows_source_packages[@]}"; do
        fetch_source "$name" "$sources/$name"
    done

    build_project expat "$sources/expat/expat" "$prefix" \
        -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_TESTS=OFF \
        -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_DOCS=OFF

    build_project libpng "$sources/libpng1.6" "$prefix" \
        -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF

    build_project benchmark "$sources/benchmark" "$prefix" \
        -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_GTEST_TESTS=OFF \
        -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF

    for name in libdeflate minizip libmd; do
        cp "$root/cmake/$name.cmake" "$sources/$name/CMakeLists.txt"
        build_project "$name" "$sources/$name" "$prefix"
    done

    cp "$root/cmake/cairo.cmake" "$sources/cairo/CMakeLists.txt"
    mv "$sources/pixman" "$sources/cairo/pixman"
    build_project cairo "$sources/cairo" "$prefix"

    # HTML and sockets are not used, but parts of wxWidgets that are do not compile without them.
    # What nobody here calls stays out, and -O1 compiles faster: both are minutes of a first build.
    build_project wxWidgets "$sources/wxwidgets3.2" "$prefix" \
        "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG" \
        -DwxBUILD_SHARED=ON -DwxBUILD_PRECOMP=ON -DwxBUILD_TESTS=OFF -DwxBUILD_SAMPLES=OFF \
        -DwxUSE_EXPAT=sys -DwxUSE_ZLIB=sys -DwxUSE_LIBPNG=sys \
        -DwxUSE_LIBJPEG=OFF -DwxUSE_LIBTIFF=OFF -DwxUSE_REGEX=OFF -DwxUSE_NANOSVG=OFF \
        -DwxUSE_AUI=OFF -DwxUSE_RIBBON=OFF -DwxUSE_PROPGRID=OFF -DwxUSE_RICHTEXT=OFF \
        -DwxUSE_STC=OFF -DwxUSE_WEBVIEW=OFF -DwxUSE_MEDIACTRL=OFF -DwxUSE_OPENGL=OFF \
        -DwxUSE_DEBUGREPORT=OFF -DwxUSE_WXHTML_HELP=OFF -DwxUSE_HTML=ON -DwxUSE_SOCKETS=ON \
        -DwxUSE_GRID=OFF -DwxUSE_DATAVIEWCTRL=OFF -DwxUSE_TREELISTCTRL=OFF \
        -DwxUSE_MDI=OFF -DwxUSE_MDI_ARCHITECTURE=OFF -DwxUSE_SVG=OFF -DwxUSE_WEBREQUEST=OFF \
        -DwxUSE_PREFERENCES_EDITOR=OFF -DwxUSE_BANNERWINDOW=OFF -DwxUSE_ANIMATIONCTRL=OFF \
        -DwxUSE_SPLASH=OFF -DwxUSE_STARTUP_TIPS=OFF -DwxUSE_MS_HTML_HELP=OFF \
        -DwxUSE_JOYSTICK=OFF -DwxUSE_SOUND=OFF -DwxUSE_FSWATCHER=OFF -DwxUSE_SECRETSTORE=OFF
}
