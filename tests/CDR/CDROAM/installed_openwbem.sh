#!/bin/sh
# usage: installed_openwbem.sh SOURCE_DIR WORK_DIR CMAKE GENERATOR NM
# Builds the module against an OpenWBEM below a prefix of its own, whose library lacks the conversion from ISO 8859-1.
set -eu
source=$1 work=$2 cmake=$3 generator=$4 nm=$5
prefix=$work/prefix
rm -rf "$prefix"
mkdir -p "$prefix/include"
cp -r "$source/openwbem/inc" "$prefix/include/openwbem"
sed -i '/ISO8859ToUTF8/d' "$prefix/include/openwbem/OW_UTF8Utils.hpp"

export CCACHE_NOHASHDIR=1
"$cmake" -S "$source" -B "$work/build" -G "$generator" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O0 -g1" \
    -DOPENWBEM_ROOT="$prefix" -DCDR_BUILD_SERVER=OFF -DCDR_BUILD_TESTS=OFF
"$cmake" --build "$work/build" --target CDRProvider

module=$(find "$work/build" -name CDRProvider.so)
"$(dirname "$0")/exported_symbols.sh" "$nm" "$module"
defines() {
    "$nm" -C --defined-only "$module" | grep -q "$1" || {
        echo "the module lacks $1"
        exit 1
    }
}
defines 'OpenWBEM::UTF8Utils::ISO8859ToUTF8'
