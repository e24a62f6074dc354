#!/bin/sh
# Runs the solver on the decks in frd/ and keeps its result file and its print-out beside each deck.
# The files are checked in as the solver writes them; run this again only when a deck changes.
# Needs ccx (Debian: calculix-ccx).
set -eu

cd "$(dirname "$0")/frd"
folder=$(pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

for deck in *.inp; do
    job=${deck%.inp}
    cp "$deck" "$scratch/"
    if ! (cd "$scratch" && timeout 60 ccx "$job" >"$job.log" 2>&1) || grep -q '\*ERROR' "$scratch/$job.log"; then
        echo "make_frd.sh: ccx failed on $deck" >&2
        grep -A 3 '\*ERROR' "$scratch/$job.log" >&2 || true
        exit 1
    fi
    cp "$scratch/$job.frd" "$scratch/$job.dat" "$folder/"
done
