"""Puts all changes of a source into it at once, each behind a switch that is thrown when the program runs."""
import collections
import re

SWITCH = "base/MutantSwitch.h"
HEADER = r"""#pragma once
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

/* Which of the changes in these sources is made, which are come by, and how often any of them is asked about.
 * MUTANT names the change; MUTANTS_SEEN a file for the rest, which outlives the process however it ends. */
namespace mutants {

inline constexpr unsigned mostMutants = 65536;

struct Seen {
    uint64_t asked;
    uint8_t isSeen[mostMutants];
};

inline Seen ownSeen;
inline Seen* seen = &ownSeen;
inline unsigned active = ~0U;
inline uint64_t mostAsked = ~uint64_t{0};
inline bool isReady = false;

/* Before any object of the program. */
[[gnu::constructor(101)]] static void Begin() {
    if (isReady) return;
    isReady = true;
    if (const char* const text = getenv("MUTANT")) active = static_cast<unsigned>(strtoul(text, nullptr, 10));
    if (const char* const text = getenv("MUTANTS_MOST")) mostAsked = strtoull(text, nullptr, 10);
    if (const char* const path = getenv("MUTANTS_SEEN")) {
        const int file = open(path, O_RDWR);
        void* const memory = mmap(nullptr, sizeof(Seen), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory != MAP_FAILED) seen = static_cast<Seen*>(memory);
        close(file);
    }
}

inline bool Is(unsigned mutant) {
    seen->isSeen[mutant] = 1;
    // Asked so often, it goes round for ever.
    if (++seen->asked > mostAsked) _exit(86);
    return mutant == active;
}

/* In functions that the compiler may call, too. */
constexpr bool IsWhenRun(unsigned mutant) {
    return __builtin_is_constant_evaluated() ? false : Is(mutant);
}

}  // namespace mutants
"""


class Place:
    """The mutants of one extent."""

    def __init__(self, begin, end, form):
        self.begin, self.end, self.form = begin, end, form
        self.mutants = []

    @property
    def type(self):
        names = {mutant.type for _, mutant in self.mutants}
        return names.pop() if len(names) == 1 else "bool" if names == {"", "bool"} else ""


class Writer:
    """Makes the new text of one file, and keeps where in it each mutant stands."""

    def __init__(self, source, numbered):
        self.source = source
        self.parts = []
        self.length = 0
        self.alternatives = []  # (begin, end, number) in the new text
        self.wholes = []  # (begin, end, numbers) in the new text
        self.places = self.nested(numbered)
        self.edits = self.relaxing(numbered)
        # Resources include headers, too, of which they bear little.
        self.lines_before = 2 if numbered else 0
        if numbered:
            self.put(f'#include "{SWITCH}"\n#line 1\n')
        self.copy(0, len(source))

    @staticmethod
    def nested(numbered):
        places = collections.OrderedDict()
        for number, mutant in numbered:
            key = (mutant.begin, mutant.end, mutant.form)
            places.setdefault(key, Place(*key)).mutants.append((number, mutant))
        ordered = sorted(places.values(), key=lambda place: (place.begin, -place.end, place.form == "value"))
        # What overlaps without lying within is hidden behind a macro.
        kept, open_ends = [], []
        for place in ordered:
            while open_ends and open_ends[-1] <= place.begin:
                open_ends.pop()
            if not open_ends or place.end <= open_ends[-1]:
                kept.append(place)
                open_ends.append(place.end)
        return kept

    def relaxing(self, numbered):
        """constexpr of what is made at the start becomes const, of the variable itself."""
        edits = {}
        for relaxed in {mutant.relaxed for _, mutant in numbered if mutant.relaxed}:
            name, _, at = relaxed.partition("@")
            begin = int(at)
            word = re.compile(rb"constexpr\s+").search(self.source, begin)
            is_member = re.search(rb"static\s+$", self.source[begin:word.start()]) and self.is_indented(begin)
            edits[word.start()] = (word.end(), "inline " if is_member else "")
            spot = re.compile(rb"\b" + name.encode() + rb"\b").search(self.source, word.end()).start()
            edits[spot] = (spot, "const ")
        return edits

    def is_indented(self, begin):
        return self.source[begin - 1:begin] == b" "

    def put(self, text):
        self.parts.append(text)
        self.length += len(text)

    def copy(self, begin, end):
        """The source from begin to end, with the places in it."""
        at = begin
        while at < end:
            place = self.places[0] if self.places and self.places[0].end <= end else None
            stop = place.begin if place else end
            self.copy_plain(at, stop)
            at = stop
            if place:
                self.places.pop(0)
                self.put_place(place)
                at = place.end

    def copy_plain(self, begin, end):
        for spot in sorted(spot for spot in self.edits if begin <= spot < end):
            self.put(self.source[begin:spot].decode())
            begin, text = self.edits[spot]
            self.put(text)
        self.put(self.source[begin:end].decode())

    def put_place(self, place):
        start = self.length
        put = self.put_value if place.form == "value" else self.put_statement
        put(place)
        self.wholes.append((start, self.length, [number for number, _ in place.mutants]))

    @staticmethod
    def question(number, mutant):
        return f"mutants::{'IsWhenRun' if mutant.in_constant else 'Is'}({number})"

    def put_value(self, place):
        self.put(f"static_cast<{place.type}>(" if place.type else "(")
        for number, mutant in place.mutants:
            self.put(f"{self.question(number, mutant)} ? ")
            start = self.length
            self.put(f"static_cast<bool>({mutant.text})" if place.type == "bool" else f"({mutant.text})")
            self.alternatives.append((start, self.length, number))
            self.put(" : ")
        self.put("static_cast<bool>(" if place.type == "bool" else "(")
        self.copy(place.begin, place.end)
        self.put("))")

    def put_statement(self, place):
        self.put("{ ")
        for number, mutant in place.mutants:
            if mutant.form == "removal":
                self.put(f"if (!{self.question(number, mutant)}) ")
            else:
                self.put(f"if ({self.question(number, mutant)}) ")
                start = self.length
                self.put(mutant.text + " ")
                self.alternatives.append((start, self.length, number))
        self.put("{ ")
        self.copy(place.begin, place.end)
        self.put(" } }")

    @property
    def text(self):
        return "".join(self.parts)


def offset_of(writer, line, column):
    """`line` counts from the first of the source."""
    begin = 0
    for _ in range(line - 1 + writer.lines_before):
        begin = writer.text.index("\n", begin) + 1
    return begin + column - 1


def mutants_at(writer, line, column, width="change"):
    """The numbers of those that a complaint about this spot is about: the change that is there, the texts of
    its line that are empty instead (which have another size), all of the place, or all of the line."""
    at = offset_of(writer, line, column)
    inside = []
    if width == "change":
        inside = [(end - begin, [number]) for begin, end, number in writer.alternatives if begin <= at < end]
    elif width == "place":
        inside = [(end - begin, numbers) for begin, end, numbers in writer.wholes if begin <= at < end]
    if inside or width in ("change", "place"):
        return min(inside)[1] if inside else []
    first = offset_of(writer, line, 1)
    last = writer.text.index("\n", first)
    if width == "line":
        return [number for begin, _, numbers in writer.wholes if first <= begin < last for number in numbers]
    return [number for begin, end, number in writer.alternatives
            if first <= begin < last and writer.text[begin:end] in ('("")', '(TEXT(""))')]


def words_at(writer, line):
    """The names in this line."""
    begin = offset_of(writer, line, 1)
    return set(re.findall(r"[A-Za-z_]\w*", writer.text[begin:writer.text.index("\n", begin)]))


def mutated(source, mutant):
    """The source with this change alone."""
    text = mutant.text
    if mutant.form == "value":
        text = f"({text})"
        if mutant.type:
            text = f"static_cast<{mutant.type}>{text}"
    return source[:mutant.begin] + (text or "{}").encode() + source[mutant.end:]
