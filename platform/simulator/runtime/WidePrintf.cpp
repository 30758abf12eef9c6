/* The wide printf of the device's runtime. Numbers are left to the host's runtime, one directive at a time;
 * text is padded here, unit by unit. */
#include "Platform.h"

#include <algorithm>
#include <climits>
#include <string>

#include "machine/Allocations.h"
#include "machine/Text.h"
#include "machine/Violations.h"

namespace {

enum class Size { Default, Short, Long, SixtyFour, Pointer };

struct Directive {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;  // -1: none given
    Size size = Size::Default;
    char16_t conversion = 0;
};

class Formatter {
public:
    Formatter(const WCHAR* format, va_list arguments) : next_(format) { va_copy(arguments_, arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;
    ~Formatter() { va_end(arguments_); }

    std::u16string Format() {
        while (*next_ != 0) {
            if (*next_ != u'%') {
                output_ += *next_++;
                continue;
            }
            ++next_;
            const Directive directive = Parse();
            if (directive.conversion != 0) Convert(directive);
        }
        return std::move(output_);
    }

private:
    Directive Parse();
    void ParseFlags(Directive& directive);
    int ParseCount();
    Size ParseSize();
    void Convert(const Directive& directive);
    void ConvertInteger(const Directive& directive);
    void ConvertText(const Directive& directive, bool isWide);
    void AppendNumber(const Directive& directive, char conversion, long long value);
    void AppendPadded(const Directive& directive, const std::u16string& text);

    const WCHAR* next_;
    va_list arguments_;
    std::u16string output_;
};

Directive Formatter::Parse() {
    Directive directive;
    ParseFlags(directive);
    const int width = ParseCount();
    directive.left = directive.left || width < 0;
    directive.width = width < 0 ? -width : width;
    if (*next_ == u'.') {
        ++next_;
        directive.precision = std::max(ParseCount(), -1);
    }
    directive.size = ParseSize();
    directive.conversion = *next_;
    if (*next_ != 0) ++next_;
    return directive;
}

void Formatter::ParseFlags(Directive& directive) {
    for (;; ++next_) {
        switch (*next_) {
            case u'-':
                directive.left = true;
                break;
            case u'+':
                directive.plus = true;
                break;
            case u' ':
                directive.blank = true;
                break;
            case u'#':
                directive.alternate = true;
                break;
            case u'0':
                directive.zero = true;
                break;
            default:
                return;
        }
    }
}

int Formatter::ParseCount() {
    if (*next_ == u'*') {
        ++next_;
        return va_arg(arguments_, int);
    }
    int count = 0;
    for (; *next_ >= u'0' && *next_ <= u'9'; ++next_)
        count = std::min(count * 10 + (*next_ - u'0'), 100000000);
    return count;
}

Size Formatter::ParseSize() {
    const auto takes = [this](std::u16string_view prefix) {
        for (size_t i = 0; i < prefix.size(); ++i) {
            if (next_[i] != prefix[i]) return false;
        }
        next_ += prefix.size();
        return true;
    };
    Size size = Size::Default;
    for (;;) {
        if (takes(u"I64") || takes(u"ll")) {
            size = Size::SixtyFour;
        } else if (takes(u"I32") || takes(u"l") || takes(u"w")) {
            size = Size::Long;
        } else if (takes(u"I")) {
            size = Size::Pointer;
        } else if (takes(u"h")) {
            size = Size::Short;
        } else {
            return size;
        }
    }
}

void Formatter::Convert(const Directive& directive) {
    switch (directive.conversion) {
        case u'd':
        case u'i':
        case u'u':
        case u'o':
        case u'x':
        case u'X':
            return ConvertInteger(directive);
        case u'p': {
            Directive digits = directive;
            digits.precision = 2 * static_cast<int>(sizeof(void*));
            return AppendNumber(digits, 'X', va_arg(arguments_, intptr_t));
        }
        case u's':
        case u'c':
            return ConvertText(directive, directive.size != Size::Short);
        case u'S':
        case u'C':
            return ConvertText(directive, directive.size == Size::Long);
        case u'e':
        case u'E':
        case u'f':
        case u'g':
        case u'G':
        case u'a':
        case u'A':
        case u'n':
            simulator::Violate("a format holds %" + simulator::ToUtf8({&directive.conversion, 1}) +
                               ", which is not simulated");
            return;
        default:
            output_ += directive.conversion;
    }
}

void Formatter::ConvertInteger(const Directive& directive) {
    const auto conversion = static_cast<char>(directive.conversion);
    const bool isSigned = conversion == 'd' || conversion == 'i';
    if (directive.size == Size::SixtyFour) {
        return AppendNumber(directive, conversion, va_arg(arguments_, long long));
    }
    if (directive.size == Size::Pointer) {
        return AppendNumber(directive, conversion, va_arg(arguments_, intptr_t));
    }
    // A long has 32 bits on the device.
    const int value = va_arg(arguments_, int);
    if (directive.size == Size::Short) {
        const auto number = isSigned ? static_cast<short>(value) : static_cast<unsigned short>(value);
        return AppendNumber(directive, conversion, number);
    }
    AppendNumber(directive, conversion,
                 isSigned ? value : static_cast<long long>(static_cast<unsigned>(value)));
}

void Formatter::AppendNumber(const Directive& directive, char conversion, long long value) {
    std::string format = "%";
    if (directive.left) format += '-';
    if (directive.plus) format += '+';
    if (directive.blank) format += ' ';
    if (directive.alternate) format += '#';
    if (directive.zero) format += '0';
    format += "*.*ll";
    format += conversion;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int size = snprintf(nullptr, 0, format.c_str(), directive.width, directive.precision, value);
    std::string text(static_cast<size_t>(size) + 1, '\0');
    snprintf(text.data(), text.size(), format.c_str(), directive.width, directive.precision, value);
#pragma GCC diagnostic pop
    text.pop_back();
    output_.append(text.begin(), text.end());
}

template <class Unit>
std::u16string TextAt(const Unit* text, int precision) {
    std::u16string units;
    if (text == nullptr) return TextAt("(null)", precision);
    // No unit after the last one that is wanted is looked at: the text need not be terminated.
    for (int i = 0; i != precision && text[i] != 0; ++i) {
        units += static_cast<char16_t>(static_cast<std::make_unsigned_t<Unit>>(text[i]));
    }
    return units;
}

void Formatter::ConvertText(const Directive& directive, bool isWide) {
    const bool isCharacter = directive.conversion == u'c' || directive.conversion == u'C';
    if (isCharacter) {
        const int value = va_arg(arguments_, int);
        const auto unit = isWide ? static_cast<char16_t>(value) : static_cast<char16_t>(value & 0xFF);
        return AppendPadded(directive, std::u16string(1, unit));
    }
    if (isWide) return AppendPadded(directive, TextAt(va_arg(arguments_, const WCHAR*), directive.precision));
    AppendPadded(directive, TextAt(va_arg(arguments_, const char*), directive.precision));
}

void Formatter::AppendPadded(const Directive& directive, const std::u16string& text) {
    const auto width = static_cast<size_t>(directive.width);
    const size_t padding = width > text.size() ? width - text.size() : 0;
    // The runtime's zero flag holds for text, too.
    if (!directive.left) output_.append(padding, directive.zero ? u'0' : u' ');
    output_ += text;
    if (directive.left) output_.append(padding, u' ');
}

}  // namespace

int _vsnwprintf(WCHAR* buffer, size_t count, const WCHAR* format, va_list arguments) {
    const simulator::OwnWork ownWork;
    const std::u16string text = Formatter(format, arguments).Format();
    const size_t copied = std::min(text.size(), count);
    if (copied != 0) memcpy(buffer, text.data(), copied * sizeof(WCHAR));
    if (text.size() > count) return -1;
    if (text.size() < count) buffer[text.size()] = 0;
    return static_cast<int>(text.size());
}
