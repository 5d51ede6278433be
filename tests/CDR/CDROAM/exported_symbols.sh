#!/bin/sh
# usage: exported_symbols.sh NM MODULE
# The module shows what object managers and hosts look up in it, and nothing else.
set -eu
expected='C_RestoreCallBackHdlr
controlLogBuffer
createCDROAMInstances
createProviderCDRProvider
getOWVersion
myInstance
releaseCDROAMInstances
zpoHandle'
found=$("$1" -D --defined-only "$2" | awk '{ print $NF }' | LC_ALL=C sort)
if [ "$found" != "$expected" ]; then
    printf 'exported:\n%s\nexpected:\n%s\n' "$found" "$expected"
    exit 1
fi
