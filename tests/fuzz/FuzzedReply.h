/* How an input describes the reply of a service: in which portions it comes, how it ends, and its bytes. */
#pragma once

#include "Device.h"

#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "LMOnline.h"
#include "ReplyReading.h"

struct FuzzedReply {
    /* The first byte: 2 bits for the number of portions that are told (a byte each follows), 2 for the end of
     * the reply, 1 for an HTTP status that is a refusal. A reply that breaks has a word for the place. */
    explicit FuzzedReply(FuzzInput& input) {
        const uint8_t form = input.TakeByte();
        for (unsigned portion = 0; portion < (form & 3U); ++portion)
            reply.chunks.push_back(1U + input.TakeByte());
        const unsigned end = form >> 2U & 3U;
        if (end == 1) reply.breaks = WebReply::Break::Close;
        if (end == 2) reply.breaks = WebReply::Break::Reset;
        const size_t breakAt = end == 1 || end == 2 ? input.TakeWord() : 0U;
        if ((form & 0x10U) != 0) reply.status = 404;
        reply.body = input.TakeRest();
        reply.breakAt = std::min(breakAt, reply.body.size());
    }

    /* The service gives this reply to every request. */
    void GiveOn(Device& device) const {
        device.AddHost(u"online.orvande.example", 80, [this](const WebRequest&) { return reply; });
    }

    /* The bytes that come. */
    [[nodiscard]] std::string_view Arriving() const {
        const std::string_view body = reply.body;
        return reply.breaks == WebReply::Break::None ? body : body.substr(0, reply.breakAt);
    }

    /* Why the service has not done what it was asked, as LMOnline.h tells it, when `reading` has read the
     * reply and `status` was its first number. */
    [[nodiscard]] DWORD CauseOf(const ReplyReading& reading, int32_t status) const {
        if (reading.IsWhole() && status == 0) return ERROR_SUCCESS;
        if (reply.status >= 300) return LM_ERROR_HTTP_STATUS | reply.status;
        if (!reading.IsWhole())
            return reply.breaks == WebReply::Break::Reset ? reply.resetError : LM_ERROR_REPLY_ENDED;
        return LM_ERROR_SERVICE_STATUS | LM_ERROR_STATUS(static_cast<DWORD>(status));
    }

    WebReply reply;
};
