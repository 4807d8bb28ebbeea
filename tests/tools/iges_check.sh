#!/usr/bin/env bash
# Exports the propeller of one example project with velmar-cli export-iges and checks the file:
#   iges_check.sh lint CLI EXAMPLE.vxvl OUTDIR PYTHON LINT.py
#   iges_check.sh read CLI EXAMPLE.vxvl OUTDIR READER
# "lint" runs the structural checker; "read" reads the file back with OpenCASCADE and expects
# one face per blade surface and per hub surface, and nothing beyond the propeller radius.
set -euo pipefail
mode=$1 cli=$2 example=$3 outdir=$4
mkdir -p "$outdir"
out="$outdir/$(basename "$example" .vxvl)-$mode.igs"
msg=$("$cli" export-iges "$example" -o "$out")
echo "$msg"
# "... 4 blades, diameter 8000.0 mm, 8 blade surfaces and 3 hub surfaces"
re='diameter ([0-9.]+) ([a-z]+), ([0-9]+) blade surfaces and ([0-9]+) hub surfaces'
[[ $msg =~ $re ]] || { echo "unexpected export message"; exit 1; }
diameter=${BASH_REMATCH[1]} unit=${BASH_REMATCH[2]} faces=$((BASH_REMATCH[3] + BASH_REMATCH[4]))
case $mode in
  lint) "$5" "$6" "$out" ;;
  read)
    case $unit in mm) u=MM ;; m) u=M ;; ft) u=FT ;; in) u=INCH ;; *) echo "unit $unit"; exit 1 ;; esac
    "$5" "$out" --faces "$faces" --radius "$(awk "BEGIN{print $diameter/2}")" --unit "$u" ;;
  *) echo "mode $mode"; exit 2 ;;
esac
