/* The page that applications open for someone who has forgotten the name or the password of an account. */
#pragma once

/* A whole HTML page in UTF-8. */
extern const char* const forgotPage;
