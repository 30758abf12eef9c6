/* The images under the flows: loaded for each run, and unloaded behind it. */
#include "../ImageExport.h"
#include "Flow.h"
#include "LMAccount.h"

#define EXPORT EXPORT_JUMP
#include "AccountExports.inc"
#include "Exports.inc"
#undef EXPORT

namespace {

#define EXPORT EXPORT_ENTRY
constexpr ImageExport onlineExports[] = {
#include "Exports.inc"
};
constexpr ImageExport accountExports[] = {
#include "AccountExports.inc"
};
#undef EXPORT

LoadedLibrary& Image() {
    static auto& image = *new LoadedLibrary;
    return image;
}

void Load(const char* file, std::span<const ImageExport> exports) {
    Image() = Device::Current().LoadLibraryFile(file);
    BindExports(Image(), exports);
}

}  // namespace

std::vector<FlowRow> AllRows() {
    std::vector<FlowRow> all = LoadRows({"Load", u"OrvandeOnline", ORVANDE_LIBRARY_FILE});
    const std::vector<FlowRow> others[] = {
        LoadRows({"AccountLoading", u"OrvandeAccount", ORVANDE_ACCOUNT_FILE}),
        SearchRows(),
        DownloadRows(),
        CompanionRows(),
        CompanionDialogRows(),
        RefusedAccountRows(),
    };
    for (const std::vector<FlowRow>& rows : others)
        all.insert(all.end(), rows.begin(), rows.end());
    return all;
}

void BeginLibrary(Library library) {
    if (library == Library::Online) Load(ORVANDE_LIBRARY_FILE, onlineExports);
    if (library == Library::Account) Load(ORVANDE_ACCOUNT_FILE, accountExports);
}

void EndLibrary(Library /*library*/) {
    Image().Unload();
}
