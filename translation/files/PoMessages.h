/* The messages of a .po file as gettext's library gives them. */
#pragma once

#include <gettext-po.h>

#include <functional>
#include <string>

#include "files/Complaint.h"

/* Lets gettext's library read `bytes` and hands over each message, obsolete ones too, in their order. What it
 * finds wrong is complained of, once a line, and nothing is handed over then. Throws std::runtime_error when
 * the library gives up, which it does for no mistake in the file itself. */
void ReadPoMessages(const std::string& bytes, Complaints& complaints,
                    const std::function<void(po_message_t message)>& take);
