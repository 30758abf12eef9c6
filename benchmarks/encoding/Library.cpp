/* UrlEncode and UrlDecode, on 16-bit units. */
#include "encoding/EncodingRows.h"
#include "support/Text.h"
#include "text/UrlEncoding.h"

namespace {

struct Library {
    using Text = WideString;
    static constexpr std::string_view space = "+";

    static Text From(const std::string& text) { return ToUtf16(text); }
    static std::string To(const Text& text) { return ToUtf8(text); }
    static Text Encode(const Text& text) { return UrlEncode(text); }
    static Text Decode(const Text& text) { return UrlDecode(text); }
};

const EnterCoder<Library> entered(ownName);

}  // namespace
