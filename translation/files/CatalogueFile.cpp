/* Catalogues in files of every form. */
#include <algorithm>

#include "files/Files.h"
#include "files/PoFile.h"
#include "files/TableCheck.h"
#include "files/TableFile.h"

namespace {

bool EndsWith(const std::string& path, std::string_view ending) {
    const auto isSame = [](char one, char other) {
        return (one >= 'A' && one <= 'Z' ? one + 32 : one) == other;
    };
    return path.size() > ending.size() &&
           std::equal(path.end() - static_cast<ptrdiff_t>(ending.size()), path.end(), ending.begin(), isSame);
}

bool IsPo(const std::string& path) {
    return EndsWith(path, ".po") || EndsWith(path, ".pot");
}

/* What no form can give to the library: its reader drops CR, and NUL ends a text. */
void ComplainOfLostCharacters(const Catalogue& catalogue, Complaints& complaints) {
    for (const CatalogueEntry& entry : catalogue.entries) {
        const WideString both = entry.text + entry.translation;
        if (both.find(u'\r') != WideString::npos)
            Complain(complaints, entry.line, "a carriage return, which the library drops");
        if (both.find(u'\0') != WideString::npos)
            Complain(complaints, entry.line, "a character with the number 0, which ends a text");
    }
}

std::string BytesOf(FileForm form, const Catalogue& catalogue, Complaints& complaints) {
    if (form == FileForm::Po) return WritePo(catalogue, complaints);
    if (form == FileForm::Table) return WriteTable(catalogue, complaints);
    return WriteLanguageFile(catalogue);
}

}  // namespace

FileForm FormToWrite(const std::string& path) {
    if (path == "-" || EndsWith(path, ".txt")) return FileForm::Language;
    if (EndsWith(path, ".tsv")) return FileForm::Table;
    if (IsPo(path)) return FileForm::Po;
    throw UsageError("the name '" + path + "' does not end in .txt, .tsv, .po or .pot, which tells the form");
}

FileForm FormToRead(const std::string& path) {
    if (IsPo(path)) return FileForm::Po;
    return EndsWith(path, ".tsv") ? FileForm::Table : FileForm::Language;
}

Catalogue ReadCatalogue(const std::string& path, Complaints& complaints) {
    if (FormToRead(path) == FileForm::Po) return ReadPo(path, complaints);
    const TableText table = DecodeTable(ReadFile(path));
    if (FormToRead(path) == FileForm::Table) CheckTableEncoding(table, complaints);
    return ReadTable(table, complaints);
}

void CheckCatalogue(const std::string& path, const Catalogue& catalogue, Complaints& complaints) {
    ComplainOfLostCharacters(catalogue, complaints);
    BytesOf(FormToWrite(path), catalogue, complaints);
}

void WriteCatalogue(const std::string& path, const Catalogue& catalogue, Complaints& complaints) {
    ComplainOfLostCharacters(catalogue, complaints);
    const std::string bytes = BytesOf(FormToWrite(path), catalogue, complaints);
    if (complaints.empty()) WriteFile(path, bytes);
}
