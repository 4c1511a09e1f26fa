# Sourced by demo.sh: from a program and a stock to the compared part, in three commands.
# Needs qzhost, work, say.

# machined_and_compared NAME STOCK PROGRAM PART
machined_and_compared() {
    local job=$work/$1
    say "$1: the job"
    qzhost new-job "$job" --stock "$2" --apt "$3" --tolerance 0.02
    say "$1: cutting"
    qzhost sweep "$job"
    say "$1: the part against what was cut"
    qzhost compare --part "$4" --stock "$job/StockModelOutput.tmp" \
        --band -0.5=1 -0.05=7 0.05=2 0.5=4 --stock-colour 3 -o "$work/$1-compared.ply" \
        --csv "$work/$1-compared.csv"
    echo
    echo "Gouges red and orange, within 0.05 mm green, material left yellow and blue:"
    echo "$work/$1-compared.ply"
}

python3 samples/make-bracket.py "$work/bracket.off"
machined_and_compared bracket box:0,0,0,120,60,32 samples/bracket.apt "$work/bracket.off"

# A real part from elsewhere, when its folder is at hand; docs/samples.md says where its block stands.
basemach=${QZ_SAMPLES:-}/basemach
if [ -n "${QZ_SAMPLES:-}" ] && [ -f "$basemach/basemach.apt" ]; then
    machined_and_compared basemach box:0,0,-10.5,350,150,0 "$basemach/basemach.apt" \
        "$basemach/basemach.STL"
fi
