#pragma once

#include "Platform.h"

#include <optional>
#include <string>

#include "network/DeviceNetwork.h"

namespace simulator {

/* Hands the request to its host. The errors of the network come as replies whose sendError says so. */
WebReply Ask(const WebRequest& request);

/* Forgets all hosts and requests. */
void ResetWeb();

/* Forgets the requests. */
void ForgetRequests();

/* Gives the bytes of a reply in the portions and with the break that it asks for. */
class ReplyReader {
public:
    struct Portion {
        size_t bytes = 0;
        DWORD error = 0;  // not 0: the read fails, with these bytes all the same
    };

    explicit ReplyReader(WebReply reply);

    Portion Read(char* buffer, size_t wanted);

    /* The text of the n-th header of that name (0: the first). */
    std::optional<std::u16string> Header(std::u16string_view name, size_t n = 0) const;

    DWORD Status() const { return reply_.status; }

private:
    size_t NextChunk();
    size_t Take(char* buffer, size_t most);

    WebReply reply_;
    uint64_t position_ = 0;
    size_t reads_ = 0;
    bool isReset_ = false;
    bool isProduced_ = false;  // the producer said that the body is complete
};

}  // namespace simulator
