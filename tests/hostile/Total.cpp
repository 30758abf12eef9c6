/* The figure of the whole program. */
#include <gtest/gtest.h>

#include "hostile/Tally.h"

namespace {

class Total : public testing::Environment {
public:
    void TearDown() override {
        std::printf("figure: hostile: %zu cut, divided or wrong replies and files\n", Tally::ofAll);
    }
};

const auto* const total = testing::AddGlobalTestEnvironment(new Total);

}  // namespace
