#include "text/FormatString.h"

namespace {

/* The fixed buffer that all formatting goes through. */
class FormattedText {
public:
    FormattedText(const WCHAR* format, va_list arguments) {
        // A text that fills the buffer has no terminator of the formatter's, and one that stops at an
        // argument it cannot convert may have none either; the zeroes of the rest end the latter.
        _vsnwprintf(units, capacity, format, arguments);
        units[capacity - 1] = 0;
    }

    const WCHAR* Text() const { return units; }

private:
    static constexpr size_t capacity = 1000;
    WCHAR units[capacity] = {};
};

}  // namespace

WideString FormatStringV(const WCHAR* format, va_list arguments) {
    return WideString(FormattedText(format, arguments).Text());
}

WideString FormatString(const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const FormattedText formatted(format, arguments);
    va_end(arguments);
    return WideString(formatted.Text());
}

WideString& AppendFormatV(WideString& text, const WCHAR* format, va_list arguments) {
    return text.append(FormattedText(format, arguments).Text());
}

WideString& AppendFormat(WideString& text, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const FormattedText formatted(format, arguments);
    va_end(arguments);
    return text.append(formatted.Text());
}
