#include "ui/TranslationCatalogue.h"

#include <algorithm>

#include "base/Contained.h"
#include "base/OwnedFile.h"
#include "base/Trace.h"
#include "frame/Folders.h"
#include "frame/Paths.h"
#include "settings/Settings.h"
#include "ui/Ornaments.h"

namespace {

/* `modulePath` with ".NAME.txt" in place of its extension; empty when the module is not known. */
WideString TranslationFilePath(const WideString& modulePath, const WideString& name) {
    if (modulePath.empty()) return {};
    return GetFolderPart(modulePath) + TEXT("\\") + GetBaseName(modulePath) + TEXT(".") + name + TEXT(".txt");
}

WideString HarvestFolder(const WideString& personalFolder) {
    return personalFolder + TEXT("\\ZRTranslation");
}

WideString HarvestName(const WideString& modulePath) {
    if (modulePath.empty()) return TEXT("module");
    return GetBaseName(modulePath);
}

bool IsFolder(const WideString& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

TranslationCatalogue::~TranslationCatalogue() {
    RunContained([this] { WriteUntranslatedFile(); });
}

bool TranslationCatalogue::InitTranslation(HMODULE ownModule) {
    module = ownModule;
    return SetLanguage(ReadSettingString(TEXT("settings"), TEXT("Language"), {}));
}

bool TranslationCatalogue::SetLanguage(const WideString& name) {
    if (name == currentLanguage) return false;
    return SetLanguage(name, ModulePath());
}

bool TranslationCatalogue::SetLanguage(const WideString& name, const WideString& modulePath) {
    if (name == currentLanguage) return false;
    if (!LoadTranslationFile(TranslationFilePath(modulePath, name))) {
        if (name != TEXT("English")) return false;
        Clear();
    }
    currentLanguage = name;
    return true;
}

bool TranslationCatalogue::LoadTranslationFile(const WideString& path) {
    const FileHandle file(_wfopen(path.c_str(), TEXT("rb")));
    if constexpr (isTraced) TraceCall(TEXT("read file"), path.c_str(), file ? 1 : 0, bool{file});
    if (!file) return false;
    Clear();
    ReadTranslations(file.Get(), table);
    return !table.empty();
}

void TranslationCatalogue::Clear() {
    table.clear();
    untranslated.clear();
}

const WideString* TranslationCatalogue::FindExactly(WideStringView text) const {
    const auto at = table.lower_bound(TextKeyView(text));
    return at != table.end() && at->first.Is(text) ? &at->second : nullptr;
}

const WideString* TranslationCatalogue::FindWithoutOrnaments(WideStringView text) const {
    if (std::ranges::none_of(text, IsOrnament)) return nullptr;
    return FindExactly(WithoutOrnaments(text));
}

const WideString* TranslationCatalogue::Find(WideStringView text) const {
    const WideString* const exactly = FindExactly(text);
    return exactly ? exactly : FindWithoutOrnaments(text);
}

const WideString& TranslationCatalogue::Translate(const WideString& text) {
    const WideString* const translation = Find(text);
    return translation ? *translation : *untranslated.insert(text).first;
}

const WideString& TranslationCatalogue::Translate(const WCHAR* text) {
    if (text == nullptr) return Translate(WideString());
    const WideStringView wide(text, wcslen(text));
    const WideString* const exactly = TextKeyView::CanView(wide) ? FindExactly(wide) : nullptr;
    return exactly ? *exactly : TranslateCopy(wide);
}

const WideString& TranslationCatalogue::TranslateCopy(WideStringView text) {
    return Translate(WideString(text));
}

const WideString& TranslationCatalogue::Translate(const char* text) {
    WideString wide;
    for (; text != nullptr && *text != 0; ++text)
        wide.push_back(static_cast<WCHAR>(static_cast<signed char>(*text)));
    return Translate(wide);
}

void TranslationCatalogue::WriteUntranslatedFile() {
    const WideString folder = HarvestFolder(GetSpecialFolderPath(CSIDL_PERSONAL));
    if (!IsHarvestDue(folder)) return Clear();
    const WideString modulePath = ModulePath();
    if (WriteHarvest(folder, modulePath)) Clear();
}

void TranslationCatalogue::WriteUntranslatedFile(const WideString& modulePath,
                                                 const WideString& personalFolder) {
    const WideString folder = HarvestFolder(personalFolder);
    if (!IsHarvestDue(folder) || WriteHarvest(folder, modulePath)) Clear();
}

bool TranslationCatalogue::IsHarvestDue(const WideString& folder) const {
    return !untranslated.empty() && IsFolder(folder);
}

bool TranslationCatalogue::WriteHarvest(const WideString& folder, const WideString& modulePath) const {
    const WideString path = folder + TEXT("\\") + HarvestName(modulePath) + TEXT(".txt");
    const FileHandle file(_wfopen(path.c_str(), TEXT("wb")));
    if constexpr (isTraced) TraceCall(TEXT("write file"), path.c_str(), file ? 1 : 0, bool{file});
    if (!file) return false;
    WriteUntranslatedTexts(file.Get(), untranslated);
    return true;
}

WideString TranslationCatalogue::ModulePath() const {
    WCHAR path[MAX_PATH]{};
    const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
    // A path that fills the buffer has been cut: it names another file.
    if (length >= MAX_PATH) return {};
    return WideString(path, length);
}
