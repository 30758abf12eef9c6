/* Boost.URL: encode, and the decoding of a checked view, each into a std::string. */
#include <boost/url/encode.hpp>
#include <boost/url/pct_string_view.hpp>
#include <boost/url/rfc/unreserved_chars.hpp>

#include "encoding/EncodingRows.h"

namespace {

namespace urls = boost::urls;

const urls::encoding_opts asForm(true, true, false);

struct BoostUrl {
    using Text = std::string;
    static constexpr std::string_view space = "+";

    static const Text& From(const std::string& text) { return text; }
    static const std::string& To(const std::string& text) { return text; }
    static Text Encode(const Text& text) { return urls::encode(text, urls::unreserved_chars, asForm); }
    static Text Decode(const Text& text) { return urls::pct_string_view(text).decode(asForm); }
};

const EnterCoder<BoostUrl> entered("Boost.URL");

}  // namespace
