#include "ForgotPage.h"

#include "HtmlPage.h"

std::string ForgotPage() {
    return HtmlPage("Orvande accounts – name or password forgotten", "body { max-width: 40em; }\n",
                    R"(<h1>Name or password forgotten?</h1>
<p>This is Orvande’s reference service, for developing and trying applications. It sends no e-mail, and it
cannot tell you a name, or tell or reset a password.</p>
<p>To go on, create a new account with another name and another e-mail address, or ask whoever runs this
service.</p>
<p><a href="/">To the map shop</a></p>
)");
}
