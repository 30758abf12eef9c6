/* libcurl: curl_easy_escape and curl_easy_unescape, with the lengths that the caller knows. */
#include <curl/curl.h>

#include <memory>

#include "encoding/EncodingRows.h"

namespace {

struct Freeing {
    void operator()(char* text) const { curl_free(text); }
};
using Owned = std::unique_ptr<char, Freeing>;

struct Curl {
    using Text = std::string;
    static constexpr std::string_view space = "%20";

    static const Text& From(const std::string& text) { return text; }
    static std::string To(const Owned& text) { return text.get(); }

    static Owned Encode(const Text& text) {
        return Owned(curl_easy_escape(nullptr, text.data(), static_cast<int>(text.size())));
    }

    static Owned Decode(const Text& text) {
        int length = 0;
        return Owned(curl_easy_unescape(nullptr, text.data(), static_cast<int>(text.size()), &length));
    }
};

const EnterCoder<Curl> entered("libcurl");

}  // namespace
