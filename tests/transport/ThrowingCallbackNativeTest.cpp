/* An application that throws C++ exceptions into the library: both must come from the same compiler and share
 * its runtime, as they do here. */
#include "transport/TransferFixture.h"

using Download = Transfer;

TEST_F(Download, CallbackThatThrowsIsStoppedAtTheExport) {
    Answer(Content(5000));
    atCallback = []() -> int32_t { throw 5; };
    EXPECT_EQ(0, Fetch());
    EXPECT_EQ(8u, GetLastError()) << "as when memory runs out";
    ExpectNeitherFile();
}
