#include "SecretBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <new>
#include <string_view>

namespace {

constexpr std::string_view secret = "secret1";

std::array<char, 4096> memory;
size_t used = 0;

/* Takes from `memory`, which stays readable after it was given back. */
struct MemoryAllocator {
    static char* allocate(size_t count) {
        if (count > memory.size() - used) throw std::bad_alloc();
        used += count;
        return memory.data() + used - count;
    }
    static void deallocate(char*, size_t) {}
};

using Bytes = std::vector<char, WipingAllocator<char, MemoryAllocator>>;

bool IsInMemory(std::string_view text) {
    return std::string_view(memory.data(), memory.size()).find(text) != std::string_view::npos;
}

class SecretBytesTest : public testing::Test {
protected:
    void SetUp() override {
        memory.fill('\0');
        used = 0;
    }
};

}  // namespace

TEST_F(SecretBytesTest, EndWipesThem) {
    {
        const Bytes bytes(secret.begin(), secret.end());
        EXPECT_TRUE(IsInMemory(secret));
    }
    EXPECT_FALSE(IsInMemory(secret));
}

TEST_F(SecretBytesTest, GrowingWipesTheOldPlace) {
    Bytes bytes(secret.begin(), secret.end());
    bytes.insert(bytes.end(), 100, 'x');
    EXPECT_EQ(std::string_view(bytes.data(), secret.size()), secret);
    EXPECT_EQ(std::string_view(memory.data(), secret.size()), std::string_view("\0\0\0\0\0\0\0", 7));
}

TEST_F(SecretBytesTest, WhatWasErasedIsWipedAtTheEnd) {
    {
        Bytes bytes(secret.begin(), secret.end());
        bytes.clear();
    }
    EXPECT_FALSE(IsInMemory(secret));
}
