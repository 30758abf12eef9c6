/* GLib: g_uri_escape_string and g_uri_unescape_segment, which need not look for the text's end. */
#include <glib.h>

#include <memory>

#include "encoding/EncodingRows.h"

namespace {

struct Freeing {
    void operator()(char* text) const { g_free(text); }
};
using Owned = std::unique_ptr<char, Freeing>;

struct Glib {
    using Text = std::string;
    static constexpr std::string_view space = "%20";

    static const Text& From(const std::string& text) { return text; }
    static std::string To(const Owned& text) { return text.get(); }

    static Owned Encode(const Text& text) { return Owned(g_uri_escape_string(text.c_str(), nullptr, FALSE)); }

    static Owned Decode(const Text& text) {
        return Owned(g_uri_unescape_segment(text.data(), text.data() + text.size(), nullptr));
    }
};

const EnterCoder<Glib> entered("GLib");

}  // namespace
