/* The C++ runtime that the DLL is linked with, through a DLL made for these tests. */
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "helpers/HeapUse.h"
#include "helpers/LoadedModule.h"
#include "helpers/ReplacedImport.h"

namespace {

class ImageRuntime : public testing::Test {
protected:
    /* The number of the clause that catches an exception of each kind. */
    static constexpr int caught[] = {1, 2, 3, 5, 5, 4};

    [[nodiscard]] bool EverythingIsCaught() const {
        for (int kind = 1; kind <= 6; ++kind) {
            if (caughtAs(kind) != caught[kind - 1]) return false;
        }
        return rethrown() == 1 && replaced() == 1 && nested(4) == 4 && destroyedOnTheWay(3) == 4 &&
               caughtOnTheWay(3) == 20;
    }

    /* Runs it in eight threads at once, and counts how often it said no. */
    template <class Check>
    static int FailuresInThreads(Check check) {
        std::atomic<int> failures = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&] {
                for (int times = 0; times < 500; ++times) {
                    if (!check()) ++failures;
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        return failures;
    }

    const LoadedModule module{L"RuntimeSample.dll"};
    int (*const caughtAs)(int) = module.Find("CaughtAs");
    int (*const destroyedOnTheWay)(int) = module.Find("DestroyedOnTheWay");
    int (*const caughtOnTheWay)(int) = module.Find("CaughtOnTheWay");
    int (*const rethrown)() = module.Find("Rethrown");
    int (*const replaced)() = module.Find("Replaced");
    int (*const nested)(int) = module.Find("NestedWithoutMemory");
};

std::atomic<int> refused;

void* NoMemory(size_t /*size*/) {
    ++refused;
    return nullptr;
}

ReplacedImport WithoutMemory() {
    refused = 0;
    return {GetModuleHandleW(L"RuntimeSample.dll"), "malloc", reinterpret_cast<void (*)()>(NoMemory)};
}

}  // namespace

TEST_F(ImageRuntime, ExceptionsAreCaughtByTheirTypes) {
    for (int kind = 1; kind <= 6; ++kind)
        EXPECT_EQ(caught[kind - 1], caughtAs(kind)) << kind;
}

TEST_F(ImageRuntime, ExceptionDestroysWhatItCrosses) {
    for (const int depth : {0, 1, 1000})
        EXPECT_EQ(depth + 1, destroyedOnTheWay(depth));
}

TEST_F(ImageRuntime, DestructorsThrowAndCatchWhileAnExceptionPasses) {
    for (const int depth : {0, 1, 10})
        EXPECT_EQ(5 * (depth + 1), caughtOnTheWay(depth));
}

TEST_F(ImageRuntime, ExceptionThatIsThrownOnStaysTheSame) {
    EXPECT_EQ(1, rethrown());
}

TEST_F(ImageRuntime, ExceptionTakesThePlaceOfTheOneThatIsHandled) {
    EXPECT_EQ(1, replaced());
}

TEST_F(ImageRuntime, ExceptionsAreThrownWithoutMemory) {
    const ReplacedImport withoutMemory = WithoutMemory();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(4, nested(4));
    EXPECT_EQ(12, refused);
}

TEST_F(ImageRuntime, ThreadsThrowAtOnce) {
    EXPECT_EQ(0, FailuresInThreads([this] { return EverythingIsCaught(); }));
}

TEST_F(ImageRuntime, ThreadsThrowAtOnceWithoutMemory) {
    const ReplacedImport withoutMemory = WithoutMemory();
    // The reserve is for eight exceptions.
    EXPECT_EQ(0, FailuresInThreads([this] { return nested(1) == 1; }));
    EXPECT_EQ(8 * 500, refused);
}

TEST_F(ImageRuntime, ExceptionsLeaveNothingOnTheHeap) {
    ASSERT_TRUE(EverythingIsCaught());
    const size_t before = HeapUse();
    EXPECT_TRUE(EverythingIsCaught());
    EXPECT_EQ(before, HeapUse());
}

TEST(ImageRuntimeLoad, IsRefusedWhenThereAreTooManyObjectsToDestroy) {
    EXPECT_EQ(nullptr, LoadLibraryW(L"CrowdedSample.dll"));
    EXPECT_EQ(DWORD{ERROR_DLL_INIT_FAILED}, GetLastError());
}
