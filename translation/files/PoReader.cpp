/* The catalogue of a .po file. */
#include <algorithm>
#include <cstdlib>

#include "Utf16.h"
#include "files/CatalogueBuilder.h"
#include "files/Files.h"
#include "files/PoFile.h"
#include "files/PoLines.h"
#include "files/PoMessages.h"
#include "files/TableComment.h"
#include "files/Utf8.h"
#include "files/Words.h"

namespace {

constexpr WideStringView formFields[] = {u"MIME-Version", u"Content-Type", u"Content-Transfer-Encoding"};

std::string_view OrEmpty(const char* text) {
    return text == nullptr ? std::string_view() : text;
}

/* What a comment line of a table can hold of it. */
WideString LineOf(WideString text) {
    std::ranges::replace(text, u'\n', u' ');
    return text;
}

/* Whether a string of the line has NUL as an escape, at which the library would end the text. */
bool HasEscapedNul(std::string_view line) {
    if (line.starts_with('#') && !line.starts_with("#~")) return false;
    for (size_t at = 0; (at = line.find('\\')) != std::string_view::npos;) {
        std::string_view escape = line.substr(at + 1);
        line.remove_prefix(std::min(at + 2, line.size()));
        const bool isHex = escape.starts_with('x');
        if (isHex) escape.remove_prefix(1);
        const size_t end = escape.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "01234567");
        const std::string_view number = escape.substr(0, isHex ? end : std::min<size_t>(end, 3));
        if (!number.empty() && number.find_first_not_of('0') == std::string_view::npos) return true;
    }
    return false;
}

bool IsUtf8Charset(std::string charset) {
    std::ranges::transform(charset, charset.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    });
    // The last stands in templates.
    return charset == "UTF-8" || charset == "UTF8" || charset == "ASCII" || charset == "US-ASCII" ||
           charset == "CHARSET";
}

/* What stands behind "charset=", or nothing. */
std::string CharsetIn(std::string_view text) {
    constexpr std::string_view mark = "charset=";
    const size_t at = text.find(mark);
    if (at == std::string_view::npos) return {};
    text.remove_prefix(at + mark.size());
    return std::string(text.substr(0, text.find_first_of("; \t\\\"")));
}

/* A file that is UTF-8 all the same would be spoiled by another conversion. */
void ComplainOfCharset(const std::string& charset, std::string_view bytes, size_t line,
                       Complaints& complaints) {
    const bool isMislabelled = IsUtf8(bytes) && !IsAscii(bytes);
    Complain(complaints, line,
             "the charset is '" + charset + "' and not UTF-8: " +
                 (isMislabelled ? "write UTF-8 there, which the file is" : "convert the file with msgconv"));
}

/* Whether it is a language file or a table under another name: without a keyword, and with a record. */
bool IsTable(std::string_view bytes) {
    bool hasKeyword = false;
    bool hasRecord = false;
    ForEachLine(bytes, [&](std::string_view line, size_t) {
        hasKeyword = hasKeyword || line.starts_with("msgid");
        hasRecord = hasRecord || (line.find('\t', 1) != std::string_view::npos && !line.starts_with('#'));
    });
    return hasRecord && !hasKeyword;
}

/* What is wrong with the file as a whole; empty: nothing. */
std::string AboutForm(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return "the file is UTF-16: save it as UTF-8, or give it a name that "
               "ends in .txt if it is a language file";
    return IsTable(bytes) ? "the file is a table: give it a name that ends in .tsv" : "";
}

void ComplainOfBytes(std::string_view bytes, Complaints& complaints) {
    const std::string aboutForm = AboutForm(bytes);
    if (!aboutForm.empty()) return Complain(complaints, 1, aboutForm);
    const bool isUtf8 = IsUtf8(bytes);
    bool isDeclared = false;
    ForEachLine(bytes, [&](std::string_view line, size_t number) {
        const std::string charset = isDeclared || !line.starts_with('"') ? "" : CharsetIn(line);
        if (!charset.empty() && !isUtf8 && !IsUtf8Charset(charset)) {
            isDeclared = true;
            ComplainOfCharset(charset, bytes, number, complaints);
        }
        if (!isDeclared && !IsUtf8(line))
            Complain(complaints, number, "the line is not UTF-8: save the file as that");
        if (line.find('\0') != std::string_view::npos || HasEscapedNul(line))
            Complain(complaints, number, "a character with the number 0, which ends a text");
    });
}

class PoReader {
public:
    PoReader(std::string_view all, Complaints& toTell)
        : bytes(all), lines(ReadPoLines(all)), complaints(toTell) {}

    void Take(po_message_t message) {
        told = index < lines.size() ? lines[index] : PoMessageLines{};
        line = told.text;
        ++index;
        if (po_message_msgid_plural(message) != nullptr)
            Complain(complaints, line, "plural forms, which the library does not have");
        const bool isHead = *po_message_msgid(message) == '\0' && po_message_msgctxt(message) == nullptr;
        if (isHead && po_message_is_obsolete(message) == 0)
            TakeHead(message);
        else
            TakeEntry(message);
    }

    /* Notes behind the last message belong to none. */
    Catalogue Catalogued() {
        std::vector<WideString> notes = NotesBehindMessages(bytes);
        for (WideString& note : notes)
            std::erase(note, u'\r');
        AddOnce(built.Get().notes, notes);
        return built.Take();
    }

private:
    void TakeHead(po_message_t message) {
        Catalogue& catalogue = built.Get();
        catalogue.notes = LinesOf(po_message_comments(message));
        catalogue.places = LinesOf(po_message_extracted_comments(message));
        catalogue.references = told.references;
        catalogue.flags = told.flags;
        catalogue.isHeadFuzzy = po_message_is_fuzzy(message) != 0;
        ForEachLine(OrEmpty(po_message_msgstr(message)),
                    [&](std::string_view content, size_t) { TakeField(content); });
    }

    void TakeField(std::string_view content) {
        CatalogueField field = FieldOfLine(WithoutReturns(content));
        if (field.name == u"Content-Type") CheckCharset(content);
        const bool isOfForm = std::ranges::find(formFields, field.name) != std::end(formFields);
        if (!isOfForm && !content.empty()) built.Get().fields.push_back(std::move(field));
    }

    void CheckCharset(std::string_view type) {
        const std::string charset = CharsetIn(type);
        if (!charset.empty() && !IsUtf8Charset(charset)) ComplainOfCharset(charset, bytes, line, complaints);
    }

    void TakeEntry(po_message_t message) {
        CatalogueEntry entry;
        entry.line = line;
        entry.text = TextOf(OrEmpty(po_message_msgid(message)));
        entry.translation = TranslationOrNone(TextOf(OrEmpty(po_message_msgstr(message))));
        entry.screen = WithoutReturns(OrEmpty(po_message_msgctxt(message)));
        entry.guessedFrom = WithoutReturns(OrEmpty(po_message_prev_msgid(message)));
        entry.guessedFromScreen = WithoutReturns(OrEmpty(po_message_prev_msgctxt(message)));
        if (po_message_prev_msgid_plural(message) != nullptr)
            Lose("the former text's plural form, which the library does not have, is left out");
        entry.notes = LinesOf(po_message_comments(message));
        entry.places = LinesOf(po_message_extracted_comments(message));
        entry.references = told.references;
        entry.flags = told.flags;
        entry.isFormat = po_message_is_format(message, "c-format") != 0;
        entry.isFuzzy = po_message_is_fuzzy(message) != 0;
        entry.isObsolete = po_message_is_obsolete(message) != 0;
        if (entry.text.empty()) {
            Complain(complaints, line, "the text is empty");
            return;
        }
        if (!entry.isObsolete) JoinScreens(entry);
        built.Add(std::move(entry));
    }

    /* Its text may have been met on another screen. */
    void JoinScreens(CatalogueEntry& entry) {
        const CatalogueEntry* const other = built.Find(entry.text);
        if (other == nullptr) return;
        const bool areBoth = !entry.translation.empty() && !other->translation.empty();
        if (areBoth && entry.translation != other->translation) {
            Complain(complaints, line,
                     "the text has another translation in line " + std::to_string(other->line) +
                         ", and the library knows only one");
        }
        if (entry.screen != other->screen)
            Lose("the text stands in line " + std::to_string(other->line) +
                 ", too: both become one message, as the library knows it");
        const WideString screen = LineOf(entry.screen);
        const auto isHere = [&screen](const WideString& place) { return ScreenOfPlace(place) == screen; };
        if (!entry.screen.empty() && entry.screen != other->screen &&
            std::ranges::none_of(entry.places, isHere))
            entry.places.push_back(screen);
    }

    void Lose(std::string what) { Complain(built.Get().losses, line, std::move(what)); }

    /* For tables, which cannot hold them. */
    WideString WithoutReturns(std::string_view text) {
        WideString without = TextOf(text);
        if (std::erase(without, u'\r') > 0)
            Lose("a carriage return beside the text and its translation is left out");
        return without;
    }

    std::vector<WideString> LinesOf(const char* text) {
        std::vector<WideString> all;
        ForEachLine(OrEmpty(text),
                    [&](std::string_view each, size_t) { all.push_back(WithoutReturns(each)); });
        return all;
    }

    /* Escapes may make bytes that are no UTF-8. */
    WideString TextOf(std::string_view text) {
        if (!IsUtf8(text)) Complain(complaints, line, "an escape stands for a byte that is not UTF-8");
        return Utf16Of(text);
    }

    std::string_view bytes;
    std::vector<PoMessageLines> lines;
    Complaints& complaints;
    CatalogueBuilder built;
    PoMessageLines told; /* of the message that is taken */
    size_t index = 0;
    size_t line = 0;
};

}  // namespace

Catalogue ReadPo(const std::string& path, Complaints& complaints) {
    std::string bytes = ReadFile(path);
    if (bytes.starts_with(utf8Mark)) bytes.erase(0, utf8Mark.size());
    Complaints found;
    ComplainOfBytes(bytes, found);
    PoReader reader(bytes, found);
    if (found.empty())
        ReadPoMessages(WithoutReferences(bytes), found,
                       [&reader](po_message_t message) { reader.Take(message); });
    complaints.insert(complaints.end(), found.begin(), found.end());
    return reader.Catalogued();
}
