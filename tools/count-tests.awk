# Counts the tests in the verbose output of ctest. A program of GoogleTest counts for each of its cases, any
# other for one. A case that was begun and did not end well has failed, whatever stopped it; so has a program
# that ends badly after its last case. Prints "PASSED FAILED", then what each failed case or program has
# printed.
{ sub(/\r$/, "") }

/^[0-9]+: / {
    program = $1 + 0
    line = substr($0, index($0, ": ") + 2)
    if (line ~ /^\[==========\] Running [0-9]+ test/) { split(line, words, " "); begun[program] += words[3] }
    if (line ~ /\[ RUN      \]/) shown[program] = ""
    shown[program] = shown[program] line "\n"
    if (line ~ /\[       OK \]/) { passed[program]++; shown[program] = "" }
    if (line ~ /^\[  (FAILED|SKIPPED) / && line ~ /\([0-9]+ ms\)$/) {
        failures = failures shown[program]
        shown[program] = ""
    }
}

/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: / {
    match($0, /#[0-9]+/)
    program = substr($0, RSTART + 1, RLENGTH - 1) + 0
    well = $0 ~ /   Passed +[0-9.]+ sec/
    good = program in begun ? passed[program] + 0 : well
    bad = program in begun ? begun[program] - good : !well
    if (!well && bad == 0) bad = 1
    if (!well) failures = failures shown[program] $0 "\n"
    all_passed += good
    all_failed += bad
}

END { printf "%d %d\n%s", all_passed, all_failed, failures }
