/* The wide printf of the device's runtime. It allocates nothing, and what has no room in the caller's buffer
 * is never made: a directive may ask for any width. */
#include "Platform.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <string>
#include <string_view>

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

/* The text so far, as far as there is room for it. */
class Output {
public:
    Output(WCHAR* units, size_t room) : units_(units), room_(room) {}

    void Append(size_t times, char16_t unit) {
        const size_t taken = Take(times);
        std::fill_n(units_ + size_ - taken, taken, unit);
    }

    template <class Unit>
    void Append(const Unit* text, size_t size) {
        const size_t taken = Take(size);
        std::transform(text, text + taken, units_ + size_ - taken,
                       [](Unit unit) { return static_cast<std::make_unsigned_t<Unit>>(unit); });
    }

    size_t Size() const { return size_; }
    bool IsCut() const { return isCut_; }

private:
    /* Lengthens the text by `size` units or as many as there is room for; how many these are. */
    size_t Take(size_t size) {
        const size_t taken = std::min(size, room_ - size_);
        isCut_ = isCut_ || taken < size;
        size_ += taken;
        return taken;
    }

    WCHAR* units_;
    size_t room_;
    size_t size_ = 0;
    bool isCut_ = false;
};

void ViolateConversion(char16_t conversion) {
    const simulator::OwnWork ownWork;
    simulator::Violate("a format holds %" + simulator::ToUtf8({&conversion, 1}) + ", which is not simulated");
}

class Formatter {
public:
    Formatter(Output& output, const WCHAR* format, va_list arguments) : output_(output), next_(format) {
        va_copy(arguments_, arguments);
    }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;
    ~Formatter() { va_end(arguments_); }

    void Format() {
        while (*next_ != 0) {
            if (*next_ != u'%') {
                output_.Append(1, *next_++);
                continue;
            }
            ++next_;
            const Directive directive = Parse();
            if (directive.conversion != 0) Convert(directive);
        }
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
    template <class Unit>
    void AppendText(const Directive& directive, const Unit* text);
    template <class Unit>
    void AppendPadded(const Directive& directive, const Unit* text, size_t size);

    Output& output_;
    const WCHAR* next_;
    va_list arguments_;
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
    constexpr int most = 100000000;  // more than any buffer has
    if (*next_ == u'*') {
        ++next_;
        return std::clamp(va_arg(arguments_, int), -most, most);
    }
    int count = 0;
    for (; *next_ >= u'0' && *next_ <= u'9'; ++next_)
        count = std::min(count * 10 + (*next_ - u'0'), most);
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
        } else if (!takes(u"L")) {  // of real numbers alone
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
            return ViolateConversion(directive.conversion);
        default:
            output_.Append(1, directive.conversion);
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

/* What comes before the digits: a sign, or what tells the base. */
std::string_view PrefixOf(const Directive& directive, char conversion, long long value) {
    const bool isSigned = conversion == 'd' || conversion == 'i';
    if (isSigned) return value < 0 ? "-" : directive.plus ? "+" : directive.blank ? " " : "";
    if (!directive.alternate || value == 0) return "";
    return conversion == 'x' ? "0x" : conversion == 'X' ? "0X" : "";
}

/* The digits of a number: no more than it needs, and at least one. */
class Digits {
public:
    Digits(char conversion, long long value) {
        const bool isNegative = value < 0 && (conversion == 'd' || conversion == 'i');
        const auto number = static_cast<unsigned long long>(value);
        const int base = conversion == 'o' ? 8 : std::toupper(conversion) == 'X' ? 16 : 10;
        const char* const end =
            std::to_chars(digits_, std::end(digits_), isNegative ? 0 - number : number, base).ptr;
        size_ = static_cast<size_t>(end - digits_);
        if (conversion != 'X') return;
        std::transform(digits_, digits_ + size_, digits_,
                       [](char digit) { return static_cast<char>(std::toupper(digit)); });
    }

    std::string_view Text() const { return {digits_, size_}; }

private:
    char digits_[22];  // of 64 bits in octal
    size_t size_;
};

void Formatter::AppendNumber(const Directive& directive, char conversion, long long value) {
    const std::string_view prefix = PrefixOf(directive, conversion, value);
    const Digits all(conversion, value);
    const std::string_view digits = value == 0 && directive.precision == 0 ? "" : all.Text();
    const auto width = static_cast<size_t>(directive.width);
    const bool needsOctalZero = directive.alternate && conversion == 'o' && !digits.starts_with('0');
    size_t least = digits.size() + (needsOctalZero ? 1 : 0);
    if (directive.precision >= 0) {
        least = std::max(least, static_cast<size_t>(directive.precision));
    } else if (directive.zero && !directive.left && width > prefix.size()) {
        least = std::max(least, width - prefix.size());
    }
    const size_t size = prefix.size() + least;
    const size_t padding = width > size ? width - size : 0;
    if (!directive.left) output_.Append(padding, u' ');
    output_.Append(prefix.data(), prefix.size());
    output_.Append(least - digits.size(), u'0');
    output_.Append(digits.data(), digits.size());
    if (directive.left) output_.Append(padding, u' ');
}

void Formatter::ConvertText(const Directive& directive, bool isWide) {
    const bool isCharacter = directive.conversion == u'c' || directive.conversion == u'C';
    if (isCharacter) {
        const int value = va_arg(arguments_, int);
        const auto unit = isWide ? static_cast<char16_t>(value) : static_cast<char16_t>(value & 0xFF);
        return AppendPadded(directive, &unit, 1);
    }
    if (isWide) return AppendText(directive, va_arg(arguments_, const WCHAR*));
    AppendText(directive, va_arg(arguments_, const char*));
}

template <class Unit>
void Formatter::AppendText(const Directive& directive, const Unit* text) {
    if (text == nullptr) return AppendText(directive, "(null)");
    // No unit after the last one that is wanted is looked at: the text need not be terminated.
    size_t size = 0;
    while (size != static_cast<size_t>(directive.precision) && text[size] != 0)
        ++size;
    AppendPadded(directive, text, size);
}

template <class Unit>
void Formatter::AppendPadded(const Directive& directive, const Unit* text, size_t size) {
    const auto width = static_cast<size_t>(directive.width);
    const size_t padding = width > size ? width - size : 0;
    // The runtime's zero flag holds for text, too.
    if (!directive.left) output_.Append(padding, directive.zero ? u'0' : u' ');
    output_.Append(text, size);
    if (directive.left) output_.Append(padding, u' ');
}

}  // namespace

int _vsnwprintf(WCHAR* buffer, size_t count, const WCHAR* format, va_list arguments) {
    Output output(buffer, count);
    Formatter(output, format, arguments).Format();
    if (output.IsCut()) return -1;
    if (output.Size() < count) buffer[output.Size()] = 0;
    return static_cast<int>(output.Size());
}
