/* The C++ runtime of an image, through a DLL made for these tests. */
#include "Device.h"
#include "DeviceHeap.h"
#include "ImageFiles.h"
#include "support/DeviceTest.h"

namespace {

class ImageRuntime : public DeviceTest {
protected:
    LoadedLibrary Load() { return device.LoadLibraryFile(ImageFile("RuntimeSample.dll")); }

    Device& device = Device::Current();
};

std::string Deleted(const std::string& name) {
    return "DeleteFileW(\"" + name + "\") = FALSE, error 2";
}

}  // namespace

TEST_F(ImageRuntime, ObjectsAreMadeBeforeTheAttachAndDestroyedAfterTheDetachLastOnesFirst) {
    LoadedLibrary library = Load();
    EXPECT_EQ(1, library.Find<int()>("CallsOfLocalStatic")());
    EXPECT_EQ(2, library.Find<int()>("CallsOfLocalStatic")());
    library.Unload();
    const std::vector<std::string> expected = {
        Deleted("made first"),       Deleted("made second"),     Deleted("attach"),
        Deleted("made local"),       Deleted("detach"),          Deleted("destroyed local"),
        Deleted("destroyed second"), Deleted("destroyed first"),
    };
    EXPECT_EQ(expected, device.Calls({"DeleteFileW"}));
}

TEST_F(ImageRuntime, LocalStaticThatWasNotReachedIsNotDestroyed) {
    Load().Unload();
    EXPECT_EQ(6u, device.CountCalls("DeleteFileW"));
}

TEST_F(ImageRuntime, ExceptionsAreCaughtByTheirTypes) {
    const LoadedLibrary library = Load();
    auto* const caughtAs = library.Find<int(int)>("CaughtAs");
    EXPECT_EQ(1, caughtAs(1)) << "a number";
    EXPECT_EQ(2, caughtAs(2)) << "by its base class";
    EXPECT_EQ(3, caughtAs(3)) << "an object with memory of its own";
    EXPECT_EQ(5, caughtAs(4)) << "an index of the standard library's";
    EXPECT_EQ(5, caughtAs(5)) << "a length of the standard library's";
    EXPECT_EQ(4, caughtAs(6)) << "memory";
}

TEST_F(ImageRuntime, ExceptionDestroysWhatItCrosses) {
    const LoadedLibrary library = Load();
    for (const int depth : {0, 1, 1000})
        EXPECT_EQ(depth + 1, library.Find<int(int)>("DestroyedOnTheWay")(depth));
    EXPECT_EQ(1, library.Find<int()>("Rethrown")());
    EXPECT_EQ(1, library.Find<int()>("Replaced")());
}

TEST_F(ImageRuntime, DestructorsThrowAndCatchWhileAnExceptionPasses) {
    const LoadedLibrary library = Load();
    for (const int depth : {0, 1, 10})
        EXPECT_EQ(5 * (depth + 1), library.Find<int(int)>("CaughtOnTheWay")(depth));
}

TEST_F(ImageRuntime, ExceptionsAreThrownWithoutMemory) {
    const LoadedLibrary library = Load();
    auto* const nested = library.Find<int(int)>("NestedWithoutMemory");
    AllocationWatch watch(1, Failing::FromThereOn);
    const int caught = nested(4);
    watch.Stop();
    EXPECT_TRUE(watch.Failed());
    EXPECT_EQ(4, caught);
}

TEST_F(ImageRuntime, LoadIsRefusedWhicheverAllocationOfItsObjectsFails) {
    const std::string file = ImageFile("RuntimeSample.dll");
    for (const Failing failing : {Failing::Once, Failing::FromThereOn}) {
        size_t n = 1;
        for (;; ++n) {
            SCOPED_TRACE(n);
            AllocationWatch watch(n, failing);
            const LoadedLibrary library = device.LoadLibraryFile(file);
            watch.Stop();
            if (!watch.Failed()) break;
            EXPECT_FALSE(library.IsLoaded());
            EXPECT_EQ(0u, DeviceHeapBlocks());
            ASSERT_LT(n, 100u);
        }
        EXPECT_LT(4u, n) << "the reserve, and the texts of two objects";
    }
}

TEST_F(ImageRuntime, LoadIsRefusedWhenThereAreTooManyObjectsToDestroy) {
    EXPECT_FALSE(device.LoadLibraryFile(ImageFile("CrowdedSample.dll")).IsLoaded());
    const std::vector<std::string> expected = {Deleted("made") + " (33 times)",
                                               Deleted("destroyed") + " (32 times)"};
    EXPECT_EQ(expected, device.Calls({"DeleteFileW"}));
}

TEST_F(ImageRuntime, WideTextNumbersAndCastsWork) {
    const LoadedLibrary library = Load();
    EXPECT_EQ(1, library.Find<int()>("WideTextWorks")());
    EXPECT_EQ(1, library.Find<int()>("CastFinds")());
    EXPECT_EQ(1, library.Find<int(long long, double, int)>("NumbersWork")(-123456789012344, 1.5, 4));
}
