/* What the runtime's wide printf really makes of the arguments behind a format, and the placeholders to ask
 * it about. */
#pragma once

#include "Platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "text/Placeholders.h"
#include "text/WideString.h"

struct Reading {
    size_t words = 0;  // of the list of arguments; natively one for any argument
    size_t units = 0;  // of a text of two units that an argument leads to; 1 when they are taken for bytes
    bool isWritten = false;

    bool operator==(const Reading&) const = default;
};

inline void PrintTo(const Reading& reading, std::ostream* out) {
    *out << reading.words << " words, " << reading.units << " units"
         << (reading.isWritten ? ", written" : "");
}

class PlaceholderReading : public ::testing::Test {
protected:
    using Formats = std::vector<WideString>;

    /* What is read when `format` is filled in. Each argument is the address of a text of its own, so that the
     * number that is printed last tells how many were read before it, and another text what was looked at. */
    static Reading ReadingOf(const WideString& format) {
        const Filled one = Fill(format, 'Q');
        const Filled other = Fill(format, 'R');
        Reading reading{one.words, 0, one.isWritten || other.isWritten};
        if (one.text != other.text)
            reading.units = static_cast<size_t>(std::ranges::count(one.text, WCHAR{'Q'}));
        return reading;
    }

    /* All placeholders of a size and one of the letters that are read for themselves, behind their %. */
    static Formats ReadOnes(const WCHAR* letters) {
        Formats placeholders;
        for (const WCHAR* const size :
             {TEXT(""), TEXT("h"), TEXT("hh"), TEXT("l"), TEXT("ll"), TEXT("w"), TEXT("L"), TEXT("I"),
              TEXT("I32"), TEXT("I64"), TEXT("j"), TEXT("z"), TEXT("t"), TEXT("1$"), TEXT("*"), TEXT("'")}) {
            for (const WCHAR letter : WideStringView(letters)) {
                const WideString placeholder = TEXT("%") + WideString(size) + letter;
                if (ReadsArgumentsOf(placeholder.c_str(), (TEXT("x") + placeholder).c_str()))
                    placeholders.push_back(placeholder);
            }
        }
        return placeholders;
    }

    /* A placeholder with every choice of flags, width and precision that does not keep it from being read. */
    static Formats FormsOf(const WideString& placeholder) {
        Formats forms;
        for (const WCHAR* const flags : {TEXT(""), TEXT("-"), TEXT("0"), TEXT("#0"), TEXT("-+ #0")}) {
            for (const WCHAR* const width :
                 {TEXT(""), TEXT("1"), TEXT("20"), TEXT("21"), TEXT("99"), TEXT("999"), TEXT("1000")}) {
                for (const WCHAR* const precision :
                     {TEXT(""), TEXT("."), TEXT(".1"), TEXT(".20"), TEXT(".21"), TEXT(".99"), TEXT(".999")}) {
                    const WideString form =
                        TEXT("%") + WideString(flags) + width + precision + placeholder.substr(1);
                    if (ReadsArgumentsOf(placeholder.c_str(), form.c_str())) forms.push_back(form);
                }
            }
        }
        return forms;
    }

    /* A placeholder that is taken for another one is read by the runtime as that one is. */
    static void ExpectTheSameIsRead(const WCHAR* letters) {
        const Formats placeholders = ReadOnes(letters);
        ASSERT_FALSE(placeholders.empty());
        std::map<WideString, Reading> readings;
        for (const WideString& placeholder : placeholders)
            readings[placeholder] = ReadingOf(placeholder);
        for (const WideString& original : placeholders) {
            for (const WideString& format : placeholders) {
                if (!ReadsArgumentsOf(original.c_str(), (TEXT("x") + format).c_str())) continue;
                EXPECT_EQ(readings[original], readings[format]) << Name(original) << " by " << Name(format);
            }
        }
        for (const WideString& placeholder : placeholders) {
            for (const WideString& form : FormsOf(placeholder)) {
                const Reading reading = ReadingOf(form);
                EXPECT_EQ(readings[placeholder].words, reading.words) << Name(form);
                EXPECT_FALSE(reading.isWritten) << Name(form);
            }
        }
    }

    static std::string Name(const WideString& text) { return {text.begin(), text.end()}; }

private:
    struct Filled {
        WideString text;
        size_t words = 0;
        bool isWritten = false;
    };

    static constexpr size_t count = 8;

    static Filled Fill(const WideString& format, WCHAR unit) {
        static WCHAR texts[count][4];
        for (auto& text : texts)
            text[0] = text[1] = unit;
        const auto address = [](size_t i) { return reinterpret_cast<uintptr_t>(texts[i]); };
        Filled filled;
        filled.text = Print((format + TEXT("|%x")).c_str(), address(0), address(1), address(2), address(3),
                            address(4), address(5), address(6), address(7));
        const size_t end = filled.text.rfind('|');
        unsigned last = 0;
        for (const WCHAR digit : filled.text.substr(end + 1))
            last = last * 16 + static_cast<unsigned>(digit - (digit < 'a' ? '0' : 'a' - 10));
        filled.text.resize(end);
        while (filled.words < count && static_cast<uint32_t>(address(filled.words)) != last)
            ++filled.words;
        EXPECT_LT(filled.words, count) << Name(format);
        filled.isWritten = std::ranges::any_of(
            texts, [unit](const auto& text) { return text[0] != unit || text[1] != unit || text[2] != 0; });
        return filled;
    }

    static WideString Print(const WCHAR* format, ...) {
        WideString units(3000, 0);
        va_list arguments;
        va_start(arguments, format);
        const int size = _vsnwprintf(units.data(), units.size(), format, arguments);
        va_end(arguments);
        units.resize(static_cast<size_t>(size));
        return units;
    }
};
