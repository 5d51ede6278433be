#!/bin/sh
# usage: installed_libraries.sh SOURCE_DIR WORK_DIR CMAKE GENERATOR NM CXX
# Builds and installs the module against an OpenWBEM and a platform that are already on the system, each below a prefix of
# its own. The OpenWBEM lacks the conversion from ISO 8859-1; the platform is the one in memory.
set -eu
source=$1 work=$2 cmake=$3 generator=$4 nm=$5 cxx=$6
here=$(dirname "$0")
rm -rf "$work"
fail() {
    echo "$*"
    exit 1
}

openwbem=$work/openwbem
mkdir -p "$openwbem/include"
cp -r "$source/openwbem/inc" "$openwbem/include/openwbem"
sed -i '/ISO8859ToUTF8/d' "$openwbem/include/openwbem/OW_UTF8Utils.hpp"

platform=$work/platform
mkdir -p "$platform/include" "$platform/lib"
cp "$source/platform/zposhared/inc/ZpoShared.h" "$source/platform/osa/inc/osa.h" "$platform/include"
for library in ZpoShared osa; do
    "$cxx" -std=c++17 -O0 -fPIC -shared -I"$platform/include" -Wl,-soname,lib$library.so -o "$platform/lib/lib$library.so" \
        "$source"/tests/fakes/FakePlatform.cpp "$source"/tests/fakes/FakeRegistry.cpp
done

export CCACHE_NOHASHDIR=1
"$cmake" -S "$source" -B "$work/build" -G "$generator" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O0 -g1" \
    -DOPENWBEM_ROOT="$openwbem" -DPLATFORM_ROOT="$platform"
! grep -iE '^(LMDB|BOOST|SPDLOG|CLI11|OPENSSL|GTEST)' "$work/build/CMakeCache.txt" || fail "it looks for more than it needs"
"$cmake" --build "$work/build"
DESTDIR=$work/installed "$cmake" --install "$work/build" --prefix /opt/openwbem

cd "$work/installed/opt/openwbem"
[ -f share/cdr/schema/QTX_CDR.mof ] || fail "the schema is not installed"
# OpenWBEM tries every file in this folder as a module.
[ "$(ls lib/openwbem/c++providers)" = libCDRProvider.so ] || fail "the module's folder holds: $(ls lib/openwbem/c++providers)"
module=lib/openwbem/c++providers/libCDRProvider.so
"$here/exported_symbols.sh" "$nm" "$module"
"$nm" -C --defined-only "$module" | grep -q OpenWBEM::UTF8Utils::ISO8859ToUTF8 || fail "the module lacks the conversion"
for function in ZpoGetRegEntryBinary osQueueSend; do
    "$nm" -D --undefined-only "$module" | grep -q " $function" || fail "the module does not call the platform's $function"
done
