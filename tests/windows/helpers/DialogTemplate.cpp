#include "helpers/DialogTemplate.h"

#include <stdexcept>

namespace {

class Reader {
public:
    Reader(const void* bytes, size_t count) : begin(static_cast<const BYTE*>(bytes)), size(count) {}

    WORD Word() {
        if (size - position < 2) throw std::runtime_error("the template ends early");
        const int low = begin[position];
        const int high = begin[position + 1];
        position += 2;
        return static_cast<WORD>(high << 8 | low);
    }

    DWORD Dword() {
        const DWORD low = Word();
        return DWORD{Word()} << 16 | low;
    }

    int Coordinate() { return static_cast<SHORT>(Word()); }

    /* Text up to its terminator. */
    std::wstring Text() {
        std::wstring text;
        for (WORD unit = Word(); unit != 0; unit = Word())
            text.push_back(static_cast<WCHAR>(unit));
        return text;
    }

    /* Text, or a number after a word of ones, which is returned through `number`. */
    std::wstring TextOrNumber(WORD& number) {
        constexpr WORD numberFollows = 0xFFFF;
        const size_t start = position;
        if (Word() == numberFollows) {
            number = Word();
            return {};
        }
        position = start;
        return Text();
    }

    void AlignToDword() { position = (position + 3) / 4 * 4; }

    [[nodiscard]] bool IsAtEnd() const { return position >= size; }

private:
    const BYTE* begin;
    size_t size;
    size_t position = 0;
};

TemplateControl ReadControl(Reader& reader) {
    TemplateControl control;
    WORD ignored = 0;
    reader.AlignToDword();
    control.style = reader.Dword();
    reader.Dword();  // extended style
    control.x = reader.Coordinate();
    control.y = reader.Coordinate();
    control.width = reader.Coordinate();
    control.height = reader.Coordinate();
    control.id = reader.Word();
    control.className = reader.TextOrNumber(control.systemClass);
    control.text = reader.TextOrNumber(ignored);
    if (reader.Word() != 0) throw std::runtime_error("a control has data of its own");
    return control;
}

Reader ReaderOf(HMODULE module, WORD id) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), RT_DIALOG);
    if (resource == nullptr) throw std::runtime_error("there is no template " + std::to_string(id));
    return {LockResource(LoadResource(module, resource)), SizeofResource(module, resource)};
}

}  // namespace

DialogTemplate ReadDialogTemplate(HMODULE module, WORD id) {
    Reader reader = ReaderOf(module, id);
    DialogTemplate read;
    WORD ignored = 0;
    read.style = reader.Dword();
    if (read.style == 0xFFFF0001) throw std::runtime_error("the template is of the new form");
    reader.Dword();  // extended style
    read.controls.resize(reader.Word());
    read.x = reader.Coordinate();
    read.y = reader.Coordinate();
    read.width = reader.Coordinate();
    read.height = reader.Coordinate();
    read.menu = reader.TextOrNumber(ignored);
    reader.TextOrNumber(ignored);  // window class
    read.caption = reader.Text();
    if (read.style & DS_SETFONT) {
        read.fontSize = reader.Word();
        read.font = reader.Text();
    }
    for (TemplateControl& control : read.controls)
        control = ReadControl(reader);
    reader.AlignToDword();
    if (!reader.IsAtEnd()) throw std::runtime_error("bytes are left over");
    return read;
}
