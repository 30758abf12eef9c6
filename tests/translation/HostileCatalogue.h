/* Catalogues by chance, of what makes trouble in lines, fields, comments and lists. */
#pragma once

#include <random>

#include "files/Catalogue.h"

/* The same ones for the same seed. */
class HostileCatalogues {
public:
    explicit HostileCatalogues(unsigned seed) : random(seed) {}

    /* Texts differ, as those of a catalogue do. */
    Catalogue Next() {
        Catalogue catalogue;
        catalogue.notes = Lines();
        catalogue.isHeadFuzzy = Coin();
        catalogue.places = Lines();
        if (Coin()) catalogue.references = {u"a.cpp:1"};
        catalogue.flags = Flags();
        if (Coin()) catalogue.fields.push_back({u"X-Field", Line()});
        for (size_t count = Below(4); count > 0; --count)
            catalogue.entries.push_back(Entry(WideString(count, u'z')));
        return catalogue;
    }

private:
    CatalogueEntry Entry(const WideString& end) {
        CatalogueEntry entry;
        entry.text = Text() + end;
        if (Coin()) entry.translation = Text();
        entry.notes = Lines();
        entry.places = Lines();
        if (Coin())
            entry.references = {u"a.cpp:1", u"b:c",
                                u"\x2068"
                                u"d e.cpp\x2069:2"};
        entry.flags = Flags();
        if (Coin()) entry.screen = Text();
        entry.isFormat = Coin();
        entry.isFuzzy = Coin();
        if (Coin()) entry.guessedFrom = Text();
        if (!entry.guessedFrom.empty() && Coin()) entry.guessedFromScreen = Text();
        entry.isObsolete = Coin();
        return entry;
    }

    std::vector<WideString> Flags() {
        static const std::vector<WideString> some[] = {
            {}, {u"no-wrap"}, {u"max-length:20", u"no-python-format"}, {u"range: 0..9", u"a\\t"}};
        return some[Below(std::size(some))];
    }

    size_t Below(size_t end) { return random() % end; }

    bool Coin() { return Below(2) == 0; }

    WideString Text() {
        constexpr WideStringView units = u"\"\"\\\\tn\t\n #:.,~+|@-Xa\xE9";
        WideString text;
        do {
            text += units[Below(units.size())];
        } while (Below(8) != 0);
        return text;
    }

    WideString Line() {
        WideString line = Text();
        std::erase(line, u'\n');
        // A .po file's comment cannot end with a backslash.
        return line.ends_with(u'\\') ? line + u'.' : line;
    }

    std::vector<WideString> Lines() {
        std::vector<WideString> lines(Below(3));
        for (WideString& line : lines)
            line = Coin() ? WideString() : Line();
        return lines;
    }

    std::mt19937 random;
};
