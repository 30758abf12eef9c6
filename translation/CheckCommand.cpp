/* orvande-translation check */
#include <algorithm>
#include <cstdio>
#include <limits>

#include "CommandLine.h"
#include "Commands.h"
#include "check/TextCheck.h"
#include "files/Files.h"
#include "files/Harvest.h"
#include "files/Quoted.h"
#include "files/TableCheck.h"
#include "files/TableFile.h"
#include "texts/ShownTexts.h"

namespace {

constexpr const char* languageFile = "-";

CheckedFile ReadPoToCheck(const std::string& path, Complaints& complaints) {
    CheckedFile file{ReadCatalogue(path, complaints), 0, {}, false};
    file.lastLine = std::max(static_cast<size_t>(std::ranges::count(ReadFile(path), '\n')), size_t{1});
    CheckCatalogue(languageFile, file.catalogue, complaints);
    return file;
}

CheckedFile ReadTableToCheck(const std::string& path, const TableText& table, std::string_view bytes,
                             Complaints& complaints) {
    CheckedFile file{ReadTable(table, complaints), std::max(table.lines.size(), size_t{1}),
                     FindEmptyTranslations(table), table.encoding == TableEncoding::Unknown};
    if (file.catalogue.entries.empty() && !complaints.empty()) return file;
    // A table is UTF-8 as it is; the library reads the others.
    if (FormToRead(path) == FileForm::Table)
        CheckTableEncoding(table, complaints);
    else
        CheckEncoding(path, bytes, table, complaints);
    CheckRecords(table, complaints);
    return file;
}

/* Of a file in which nothing was understood it is no news that each text is missing. */
void CheckTextsRead(const CheckedFile& file, Complaints& complaints) {
    if (complaints.empty() || !file.catalogue.entries.empty()) CheckTexts(file, complaints);
}

void CheckFile(const std::string& path, Complaints& complaints) {
    if (FormToRead(path) == FileForm::Po) return CheckTextsRead(ReadPoToCheck(path, complaints), complaints);
    const std::string bytes = ReadFile(path);
    const TableText table = DecodeTable(bytes);
    if (IsRawHarvest(table.lines))
        return Complain(complaints, 1,
                        "this is a harvest as the library writes it; begin a translation with: "
                        "tools/translation convert " +
                            ShellWord(path) + " NEW.txt");
    CheckTextsRead(ReadTableToCheck(path, table, bytes, complaints), complaints);
}

/* The exit code of one file. That it cannot be read keeps nobody from the others. */
int JudgeFile(const std::string& path) {
    Complaints complaints;
    try {
        CheckFile(path, complaints);
    } catch (const UsageError& error) {
        PrintFailure(error);
        return 2;
    }
    PrintComplaints(path, complaints);
    if (!complaints.empty()) return 1;
    std::printf("%s: %zu texts, complete\n", path.c_str(), AllShownTexts().size());
    return 0;
}

}  // namespace

int RunCheck(Arguments arguments) {
    const FileCount any{1, std::numeric_limits<size_t>::max()};
    int code = 0;
    for (const std::string& path : ReadCommandLine("check FILE...", any, {}, arguments).files)
        code = std::max(code, JudgeFile(path));
    return code;
}
