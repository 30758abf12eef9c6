#include "text/FormatString.h"

namespace {

/* The fixed buffer that all formatting goes through. */
class FormattedText {
public:
    FormattedText(const WCHAR* format, va_list arguments) {
        // The formatter writes no terminator when the text fills the buffer, and perhaps none when it stops
        // at an argument that it cannot convert: there the zeroes of the rest end the text.
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
