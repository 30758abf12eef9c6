/* uriparser: uriEscapeExA into a block of three times the text, as its manual wants it, and
 * uriUnescapeInPlaceExA in a copy of the text. */
#include <uriparser/Uri.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "encoding/EncodingRows.h"

namespace {

struct Freeing {
    void operator()(char* text) const { free(text); }
};
using Owned = std::unique_ptr<char, Freeing>;

struct Uriparser {
    using Text = std::string;
    static constexpr std::string_view space = "+";

    static const Text& From(const std::string& text) { return text; }
    static std::string To(const Owned& text) { return text.get(); }

    static Owned Encode(const Text& text) {
        Owned encoded(static_cast<char*>(malloc(3 * text.size() + 1)));
        uriEscapeExA(text.data(), text.data() + text.size(), encoded.get(), URI_TRUE, URI_FALSE);
        return encoded;
    }

    static Owned Decode(const Text& text) {
        Owned decoded(static_cast<char*>(malloc(text.size() + 1)));
        memcpy(decoded.get(), text.c_str(), text.size() + 1);
        uriUnescapeInPlaceExA(decoded.get(), URI_TRUE, URI_BR_DONT_TOUCH);
        return decoded;
    }
};

const EnterCoder<Uriparser> entered("uriparser");

}  // namespace
