#include "CgiReply.h"

#include "WireWriter.h"

CgiReply RefusedReply(int32_t status, const std::string& why) {
    WireWriter writer;
    writer.WriteInt32(status);
    return {writer.TakeBytes(), "refused with status " + std::to_string(status) + ": " + why};
}
