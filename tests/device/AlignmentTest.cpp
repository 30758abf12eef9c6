/* A device stops at an address that is not a multiple of what its type asks for. The emulator does not, so
 * the checked images do so themselves. */
#include <csignal>

#include "Device.h"
#include "ImageFiles.h"
#include "support/DeviceTest.h"

namespace {

class Alignment : public DeviceTest {
protected:
    LoadedLibrary library = Device::Current().LoadLibraryFile(ImageFile("RuntimeSample.dll"));
    int (*numberAt)(const void*) = library.Find<int(const void*)>("NumberAt");
    alignas(4) const unsigned char bytes[8] = {1, 2, 3, 4, 5, 6, 7, 8};
};

}  // namespace

TEST_F(Alignment, AddressThatIsAlignedCanBeUsed) {
    EXPECT_EQ(0x04030201, numberAt(bytes));
    EXPECT_EQ(0x08070605, numberAt(bytes + 4));
}

TEST_F(Alignment, CheckedImageStopsAtAnyOther) {
    for (const int offset : {1, 2, 3}) {
        if (AreImagesChecked()) {
            EXPECT_EXIT(numberAt(bytes + offset), testing::KilledBySignal(SIGILL), "not aligned");
        } else {
            EXPECT_NE(0x04030201, numberAt(bytes + offset)) << "the emulator says nothing";
        }
    }
}
