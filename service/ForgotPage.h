/* The page that applications open for someone who has forgotten the name or the password of an account. */
#pragma once

#include <string>

/* A whole HTML page in UTF-8. */
std::string ForgotPage();
