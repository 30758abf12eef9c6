#include "Platform.h"

#include "screen/DialogTemplate.h"

#include "modules/Reader.h"

namespace simulator {

namespace {

constexpr uint16_t ordinalFollows = 0xFFFF;
constexpr uint16_t extendedSignature = 0xFFFF;

/* A text or an ordinal; an ordinal gives "#" and its number. */
std::u16string ReadNameOrOrdinal(Reader& reader) {
    const uint16_t first = reader.Word();
    if (first == 0) return {};
    if (first != ordinalFollows) return static_cast<char16_t>(first) + reader.Text();
    const std::string digits = std::to_string(reader.Word());
    return u"#" + std::u16string(digits.begin(), digits.end());
}

std::u16string ClassName(const std::u16string& name) {
    if (name == u"#128") return u"button";
    if (name == u"#129") return u"edit";
    return name == u"#130" ? u"static" : name;
}

template <class Part>
void ReadPlace(Reader& reader, Part& part) {
    part.x = reader.Short();
    part.y = reader.Short();
    part.width = reader.Short();
    part.height = reader.Short();
}

template <class Part>
void ReadStyles(Reader& reader, Part& part, bool isExtended) {
    if (isExtended) reader.Double();  // help id
    const DWORD first = reader.Double();
    const DWORD second = reader.Double();
    part.style = isExtended ? second : first;
    part.extendedStyle = isExtended ? first : second;
}

TemplateControl ReadControl(Reader& reader, bool isExtended) {
    TemplateControl control;
    reader.Align();
    ReadStyles(reader, control, isExtended);
    ReadPlace(reader, control);
    control.id = isExtended ? static_cast<int>(reader.Double()) : reader.Word();
    control.className = ClassName(ReadNameOrOrdinal(reader));
    control.text = ReadNameOrOrdinal(reader);
    reader.Skip(reader.Word());  // creation data
    return control;
}

void SkipFont(Reader& reader, bool isExtended) {
    reader.Word();                    // size
    if (isExtended) reader.Double();  // weight, italic, character set
    reader.Text();
}

}  // namespace

std::optional<DialogTemplate> ParseDialogTemplate(std::string_view bytes) {
    Reader signature(bytes);
    const bool isExtended = signature.Word() == 1 && signature.Word() == extendedSignature;
    Reader reader(bytes);
    if (isExtended) reader.Double();
    DialogTemplate result;
    ReadStyles(reader, result, isExtended);
    const size_t controls = reader.Word();
    ReadPlace(reader, result);
    ReadNameOrOrdinal(reader);  // menu: dialogs of the handheld have none
    result.hasOwnClass = !ReadNameOrOrdinal(reader).empty();
    result.caption = reader.Text();
    if ((result.style & DS_SETFONT) != 0) SkipFont(reader, isExtended);
    while (reader.IsGood() && result.controls.size() < controls)
        result.controls.push_back(ReadControl(reader, isExtended));
    if (!reader.IsGood()) return std::nullopt;
    return result;
}

}  // namespace simulator
