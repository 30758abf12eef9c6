/* The names of the events through which a test and the program that it opens talk. */
#pragma once

#define OPENED_STARTED L"OrvandeOpenedStarted"
#define OPENED_MAY_END L"OrvandeOpenedMayEnd"
#define OPENED_ENDING L"OrvandeOpenedEnding"
