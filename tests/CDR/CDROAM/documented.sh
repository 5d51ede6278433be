#!/bin/sh
# usage: documented.sh DOCUMENT SAMPLE...
# The marked parts of the sample stand in the document as they are here.
set -eu
document=$1
shift
for sample in "$@"; do
    awk -v sample="$sample" '
        FNR == NR { text = text $0 "\n"; next }
        /^\/\/ \[/ { if (inside) check(); inside = !inside; part = ""; next }
        inside { part = part $0 "\n" }
        function check() {
            parts++
            if (!index(text, part)) { print sample ": not as documented:\n" part; failed = 1 }
        }
        END { if (!parts) print sample ": nothing is marked"; exit failed || !parts }
    ' "$document" "$sample"
done
