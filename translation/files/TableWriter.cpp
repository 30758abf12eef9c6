/* The bytes of tables and language files. */
#include "Utf16.h"
#include "files/TableComment.h"
#include "files/TableFile.h"

namespace {

void AddComment(WideString& lines, CommentMark mark, WideStringView rest) {
    lines += u'#';
    if (mark != CommentMark::Note) lines += static_cast<WCHAR>(mark);
    if (!rest.empty()) {
        lines += u' ';
        lines.append(rest);
    }
    lines += u'\n';
}

void AddComments(WideString& lines, CommentMark mark, const std::vector<WideString>& notes) {
    for (const WideString& note : notes)
        AddComment(lines, mark, EscapedNote(note));
}

void AddFlags(WideString& lines, bool isFormat, bool isFuzzy, const std::vector<WideString>& others) {
    WideString joined;
    const auto add = [&joined](WideStringView flag) {
        joined.append(joined.empty() ? u"" : u", ").append(flag);
    };
    if (isFormat) add(u"c-format");
    if (isFuzzy) add(u"fuzzy");
    for (const WideString& flag : others)
        add(flag);
    if (!joined.empty()) AddComment(lines, CommentMark::Flags, EscapedNote(joined));
}

/* At least one comment, then an empty line. */
WideString HeadOf(const Catalogue& catalogue) {
    WideString lines;
    AddComments(lines, CommentMark::Note, catalogue.notes);
    AddComments(lines, CommentMark::Place, catalogue.places);
    AddComments(lines, CommentMark::Reference, catalogue.references);
    AddFlags(lines, false, catalogue.isHeadFuzzy, catalogue.flags);
    for (const CatalogueField& field : catalogue.fields)
        AddComment(lines, CommentMark::Field, EscapedNote(LineOfField(field)));
    if (lines.empty()) AddComment(lines, CommentMark::Field, {});
    return lines;
}

/* A translation that reads XXXX is none, so none is written as that. */
WideString FieldOfTranslation(const CatalogueEntry& entry) {
    return entry.translation.empty() ? WideString(u"XXXX") : EscapedText(entry.translation);
}

void AddEntry(WideString& lines, const CatalogueEntry& entry) {
    AddComments(lines, CommentMark::Note, entry.notes);
    AddComments(lines, CommentMark::Place, entry.places);
    const WideStringView told = entry.places.empty() ? WideStringView() : ScreenOfPlace(entry.places.front());
    if (entry.screen != told) AddComment(lines, CommentMark::Screen, EscapedText(entry.screen));
    AddComments(lines, CommentMark::Reference, entry.references);
    AddFlags(lines, entry.isFormat, entry.isFuzzy, entry.flags);
    if (!entry.guessedFromScreen.empty())
        AddComment(lines, CommentMark::GuessedFromScreen, EscapedText(entry.guessedFromScreen));
    if (!entry.guessedFrom.empty())
        AddComment(lines, CommentMark::GuessedFrom, EscapedText(entry.guessedFrom));
    if (entry.isObsolete) {
        AddComment(lines, CommentMark::Obsolete, EscapedText(entry.text));
        AddComment(lines, CommentMark::Obsolete, FieldOfTranslation(entry));
    } else {
        lines.append(EscapedText(entry.text)).append(u"\t").append(FieldOfTranslation(entry)).append(u"\n");
    }
}

WideString LinesOf(const Catalogue& catalogue) {
    WideString lines = HeadOf(catalogue);
    for (const CatalogueEntry& entry : catalogue.entries) {
        lines += u'\n';
        AddEntry(lines, entry);
    }
    return lines;
}

bool IsWhole(WideStringView text) {
    return Utf16Of(Utf8Of(text)) == text;
}

}  // namespace

std::string WriteLanguageFile(const Catalogue& catalogue) {
    std::string bytes("\xFF\xFE");
    const auto append = [&bytes](WCHAR unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (const WCHAR unit : LinesOf(catalogue)) {
        if (unit == u'\n') append(u'\r');
        append(unit);
    }
    return bytes;
}

std::string WriteTable(const Catalogue& catalogue, Complaints& complaints) {
    Catalogue head = catalogue;
    head.entries.clear();
    if (!IsWhole(HeadOf(head))) Complain(complaints, 0, "the head holds half of a character pair");
    for (const CatalogueEntry& entry : catalogue.entries) {
        WideString lines;
        AddEntry(lines, entry);
        if (!IsWhole(lines))
            Complain(complaints, entry.line, "half of a character pair, which UTF-8 does not have");
    }
    return Utf8Of(LinesOf(catalogue));
}
