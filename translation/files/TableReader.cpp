/* The catalogue of a table. */
#include <algorithm>
#include <utility>

#include "files/CatalogueBuilder.h"
#include "files/Harvest.h"
#include "files/Quoted.h"
#include "files/TableComment.h"
#include "files/TableFile.h"
#include "files/Words.h"
#include "texts/ShownTexts.h"
#include "ui/TranslationFile.h"

namespace {

bool IsShownExactly(WideStringView text) {
    const ShownText* const shown = FindShownText(text);
    return shown != nullptr && text == shown->text;
}

/* The text that `raw` stands for, in a file that may have been a harvest. */
WideString TextOfField(WideStringView raw) {
    WideString text = UnescapeTranslationText(raw);
    WideString harvested = HarvestedText(raw);
    if (text == harvested || text.empty() || IsShownExactly(text)) return text;
    if (IsShownExactly(harvested)) return harvested;
    WideString meant = MeantText(raw);
    if (IsShownExactly(meant) || !AreQuotesKept(raw)) return meant;
    if (FindShownText(text) != nullptr) return text;
    return FindShownText(harvested) != nullptr ? harvested : text;
}

class TableReader {
public:
    explicit TableReader(Complaints& told) : complaints(told) {}

    Catalogue Read(const std::vector<WideString>& lines) {
        harvest = TextsOfHarvest(lines);
        for (const WideString& content : lines) {
            ++line;
            TakeLine(content);
        }
        EndObsolete();
        EndHead();
        // Notes behind the last text belong to none.
        AddOnce(built.Get().notes, next.notes);
        return built.Take();
    }

private:
    void TakeLine(WideStringView content) {
        if (content.ends_with(u'\r')) content.remove_suffix(1);
        if (content.find(u'\0') != WideStringView::npos)
            Complain(complaints, line, "a character with the number 0, which ends a text");
        if (content.find_first_not_of(u" \t\r") == WideStringView::npos) {
            EndHead();
        } else if (IsTableComment(content)) {
            TakeComment(ReadTableComment(content));
        } else {
            EndObsolete();
            TakeRecord(content);
        }
    }

    void TakeComment(const TableComment& comment) {
        if (comment.mark == CommentMark::Obsolete) {
            TakeObsolete(comment.rest);
            return;
        }
        EndObsolete();
        if (isHead)
            TakeHead(comment);
        else
            TakeMark(comment);
    }

    void TakeHead(const TableComment& comment) {
        if (comment.mark == CommentMark::Note)
            built.Get().notes.push_back(UnescapedNote(comment.rest));
        else if (comment.mark == CommentMark::Field)
            TakeField(UnescapedNote(comment.rest));
        else
            TakeMark(comment);
    }

    /* Whose flags those in the first lines are is known only now. */
    void EndHead() {
        if (!isHead) return;
        isHead = false;
        Catalogue& catalogue = built.Get();
        catalogue.isHeadFuzzy = std::exchange(next.isFuzzy, false);
        catalogue.places = std::exchange(next.places, {});
        catalogue.references = std::exchange(next.references, {});
        KeepOnce(catalogue.references);
        catalogue.flags = std::exchange(next.flags, {});
        KeepOnce(catalogue.flags);
    }

    void TakeField(const WideString& content) {
        if (!content.empty()) built.Get().fields.push_back(FieldOfLine(content));
    }

    void TakeMark(const TableComment& comment) {
        switch (comment.mark) {
            case CommentMark::Place:
                next.places.push_back(UnescapedNote(comment.rest));
                break;
            case CommentMark::Reference:
                AddReferences(next.references, UnescapedNote(comment.rest));
                break;
            case CommentMark::Flags:
                next.isFormat = next.isFormat || HasFlag(comment.rest, u"c-format");
                next.isFuzzy = next.isFuzzy || HasFlag(comment.rest, u"fuzzy");
                AddOtherFlags(next.flags, UnescapedNote(comment.rest));
                break;
            case CommentMark::GuessedFrom:
                next.guessedFrom = MeantText(comment.rest);
                break;
            case CommentMark::Screen:
                next.screen = MeantText(comment.rest);
                isScreenTold = true;
                break;
            case CommentMark::GuessedFromScreen:
                next.guessedFromScreen = MeantText(comment.rest);
                break;
            case CommentMark::Field:
                next.notes.push_back(u"+" + UnescapedNote(comment.rest));
                break;
            case CommentMark::Note:
            case CommentMark::Obsolete:
                next.notes.push_back(UnescapedNote(comment.rest));
                break;
        }
    }

    void TakeObsolete(WideStringView rest) {
        isHead = false;
        if (next.text.empty()) {
            next.text = UnescapeTranslationText(rest);
            next.line = line;
            if (next.text.empty()) Complain(complaints, line, "an obsolete text is empty");
        } else {
            next.translation = TranslationOrNone(MeantText(rest));
            next.isObsolete = true;
            built.Add(TakeNext());
        }
    }

    /* An obsolete text has to be followed by its translation. */
    void EndObsolete() {
        if (next.text.empty()) return;
        Complain(complaints, next.line, "an obsolete text stands without its translation below it");
        next.text.clear();
    }

    void TakeRecord(WideStringView content) {
        isHead = false;
        if (LosesForReturn()) return;
        if (content.find(u'\r') != WideStringView::npos)
            Complain(complaints, line, "a carriage return within the line, which the library drops");
        const std::optional<TableRecord> record = ReadTableRecord(content);
        const size_t tab = content.find(u'\t');
        if (!record && (tab == 0 || tab == WideStringView::npos)) {
            Complain(complaints, line, "the line has no TAB between a text and its translation");
            return;
        }
        const WideStringView raw = record ? record->rawText : content.substr(0, tab);
        next.text = harvest.empty() ? TextOfField(raw) : harvest[line - 1];
        if (record) next.translation = TranslationOrNone(MeantText(record->rawTranslation));
        next.line = line;
        if (next.text.empty())
            Complain(complaints, line, "the text before the TAB is empty");
        else
            built.Add(TakeNext());
    }

    /* Whether the record is left out, which is told then: programs may show texts that no language file can
     * translate. They are no mistake of the file. */
    bool LosesForReturn() {
        if (harvest.empty() || harvest[line - 1].find(u'\r') == WideString::npos) return false;
        Complain(built.Get().losses, line,
                 Quoted(harvest[line - 1]) +
                     " is left out: no language file can have a text with a carriage return");
        return true;
    }

    /* The entry that is complete now. */
    CatalogueEntry TakeNext() {
        if (!isScreenTold && !next.places.empty()) next.screen = ScreenOfPlace(next.places.front());
        isScreenTold = false;
        KeepOnce(next.references);
        KeepOnce(next.flags);
        return std::exchange(next, {});
    }

    Complaints& complaints;
    CatalogueBuilder built;
    CatalogueEntry next; /* what the comments above a record have told so far */
    bool isScreenTold = false;
    bool isHead = true;
    std::vector<WideString> harvest; /* the texts of the lines, if they are one */
    size_t line = 0;
};

void ComplainOfEncoding(const TableText& table, Complaints& complaints) {
    if (table.hasHalfUnit)
        Complain(complaints, table.lines.size(),
                 "the file ends with half a character (an odd number of bytes)");
    if (table.encoding != TableEncoding::Unknown) return;
    const auto isStrange = [](WCHAR unit) { return (unit >= 0x80 && unit <= 0x9F) || unit == 0xFFFD; };
    const auto found = std::ranges::find_if(
        table.lines, [&](const WideString& content) { return std::ranges::any_of(content, isStrange); });
    Complain(complaints, static_cast<size_t>(found - table.lines.begin()) + 1,
             "the file is neither UTF-16 nor UTF-8 nor Latin-1: save it as UTF-8");
}

/* Whether the lines end with CR alone, as those of old Macs, so that there is but one. */
bool HasLinesOfCr(const TableText& table) {
    return table.lines.size() == 1 && std::ranges::count(table.lines.front(), u'\r') > 1 &&
           !table.lines.front().ends_with(u"\r\r");
}

/* Where a .po file has its first text; 0: it is none. */
size_t FindPoText(const std::vector<WideString>& lines) {
    const auto isText = [](const WideString& line) { return line.starts_with(u"msgid \""); };
    const auto isTranslation = [](const WideString& line) { return line.starts_with(u"msgstr \""); };
    const auto found = std::ranges::find_if(lines, isText);
    if (found == lines.end() || std::ranges::none_of(lines, isTranslation)) return 0;
    return static_cast<size_t>(found - lines.begin()) + 1;
}

}  // namespace

Catalogue ReadTable(const TableText& table, Complaints& complaints) {
    ComplainOfEncoding(table, complaints);
    if (HasLinesOfCr(table)) {
        Complain(complaints, 1, "the lines end with a carriage return alone: save the file with line feeds");
        return {};
    }
    if (const size_t line = FindPoText(table.lines); line != 0) {
        Complain(complaints, line, "the file is a .po file: give it a name that ends in .po");
        return {};
    }
    return TableReader(complaints).Read(table.lines);
}
