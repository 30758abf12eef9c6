#include "search/SearchRow.h"

#include <algorithm>

#include "support/Text.h"

namespace {

void AppendNumber(std::string& bytes, size_t number) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift);
}

void AppendText(std::string& bytes, const std::string& text) {
    AppendNumber(bytes, text.size());
    for (const char letter : text)
        bytes.append(1, letter).append(1, '\0');
}

void AppendField(std::string& outcome, const LMChar* field) {
    for (; *field != 0; ++field)
        outcome.append(1, static_cast<char>(*field)).append(1, static_cast<char>(*field >> 8));
    outcome.append(2, '\0');
}

}  // namespace

std::string MapReply(size_t entries) {
    Random random(entries);
    std::string bytes;
    AppendNumber(bytes, 0);
    AppendNumber(bytes, entries);
    for (size_t i = 0; i < entries; ++i) {
        AppendNumber(bytes, 4);
        AppendText(bytes, SomeWords(random, 10, 30));
        AppendNumber(bytes, random.Between(100, 60000));
        AppendText(bytes, "/maps/" + SomeWords(random, 14, 44));
        AppendText(bytes, SomeWords(random, 40, 120));
    }
    AppendNumber(bytes, 77);
    return bytes;
}

void AppendRecord(std::string& outcome, const MapShopResult& record) {
    outcome += std::to_string(record.number);
    AppendField(outcome, record.text1);
    AppendField(outcome, record.text2);
    AppendField(outcome, record.text3);
}
