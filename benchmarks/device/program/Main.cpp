/* Does one kind of work as often as the command line says ("load-catalogue 1000"). The exit code is 0 when
 * the results were right, 1 when not, and 2 when there is no such work. */
#include "Platform.h"

#include <string_view>

#include "HandDecoder.h"
#include "TextWork.h"

namespace {

bool Search(int32_t maps) {
    return SearchByHand() == maps;
}

struct Work {
    std::wstring_view name;
    bool (*work)(int32_t times);
};

constexpr Work works[] = {
    {L"search-by-hand", Search},
    {L"load-dictionary", work::LoadDictionary},
    {L"save-dictionary", work::LoadAndSaveDictionary},
    {L"load-catalogue", work::LoadCatalogue},
    {L"look-up-exact", work::LookUpExact},
    {L"look-up-exact-by-pointer", work::LookUpExactByPointer},
    {L"look-up-stripped", work::LookUpStripped},
    {L"look-up-missing", work::LookUpMissing},
    {L"encode-short", work::EncodeShort},
    {L"encode-long", work::EncodeLong},
    {L"decode-short", work::DecodeShort},
    {L"decode-long", work::DecodeLong},
};

int32_t Number(std::wstring_view digits) {
    int32_t number = 0;
    for (const wchar_t digit : digits)
        number = 10 * number + (digit - L'0');
    return number;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPWSTR commandLine, int /*show*/) {
    const std::wstring_view line(commandLine);
    const size_t gap = line.find(L' ');
    for (const Work& each : works) {
        if (line.substr(0, gap) == each.name) return each.work(Number(line.substr(gap + 1))) ? 0 : 1;
    }
    return 2;
}
