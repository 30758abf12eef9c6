#include "JournalOrder.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>

namespace {

enum class State { Open, Closed };

constexpr std::string_view kinds[] = {"session ", "connection ", "request ", "key ",
                                      "file ",    "process ",    "link "};
constexpr std::string_view closers[] = {"InternetCloseHandle(", "RegCloseKey(", "fclose(", "CloseHandle(",
                                        "ConnMgrReleaseConnection("};

bool IsDigit(char unit) {
    return unit >= '0' && unit <= '9';
}

/* The handles that a text names: "session 1". */
std::vector<std::string> HandlesIn(std::string_view text) {
    std::vector<std::string> handles;
    for (const std::string_view kind : kinds) {
        for (size_t at = 0; (at = text.find(kind, at)) != std::string_view::npos; at += kind.size()) {
            if (at > 0 && text[at - 1] != '(' && text[at - 1] != ' ') continue;
            if (text.substr(0, at).ends_with("earlier ")) continue;
            size_t end = at + kind.size();
            while (end < text.size() && IsDigit(text[end]))
                ++end;
            if (end > at + kind.size()) handles.emplace_back(text.substr(at, end - at));
        }
    }
    return handles;
}

/* Without the texts in quotation marks, which may be anything. */
std::string WithoutTexts(std::string_view line) {
    std::string plain;
    bool isInText = false;
    for (const char unit : line) {
        if (unit == '"') isInText = !isInText;
        if (!isInText) plain += unit;
    }
    return plain;
}

class Order {
public:
    void Take(const std::string& line) {
        const std::string plain = WithoutTexts(line);
        const size_t equals = plain.rfind(" = ");
        const std::string_view call = std::string_view(plain).substr(0, equals);
        const bool closes = std::any_of(std::begin(closers), std::end(closers),
                                        [&](std::string_view closer) { return call.starts_with(closer); });
        for (const std::string& handle : HandlesIn(call))
            Use(handle, closes, line);
        if (equals == std::string::npos || closes) return;
        for (const std::string& handle : HandlesIn(std::string_view(plain).substr(equals + 2)))
            Open(handle, line);
    }

    std::vector<std::string> End() {
        for (const auto& [handle, state] : states_) {
            if (state == State::Open && !IsLink(handle)) problems_.push_back(handle + " is never closed");
        }
        return std::move(problems_);
    }

private:
    static bool IsLink(std::string_view handle) { return handle.starts_with("link "); }

    void Open(const std::string& handle, const std::string& line) {
        if (!states_.emplace(handle, State::Open).second) problems_.push_back("opened twice: " + line);
    }

    void Use(const std::string& handle, bool closes, const std::string& line) {
        const auto found = states_.find(handle);
        if (found == states_.end()) {
            problems_.push_back("used before it was opened: " + line);
        } else if (found->second == State::Closed && !IsLink(handle)) {
            problems_.push_back("used after it was closed: " + line);
        } else if (closes) {
            found->second = State::Closed;
        }
    }

    std::map<std::string, State> states_;
    std::vector<std::string> problems_;
};

}  // namespace

std::vector<std::string> OutOfOrder(const std::vector<std::string>& journal) {
    Order order;
    for (const std::string& line : journal)
        order.Take(line);
    return order.End();
}
