/* What the process-wide values are before anything has been done with the library. */
#include <gtest/gtest.h>

#include "frame/ResourceModule.h"
#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"

namespace {

/* What the values are when all objects have been made and no test has been run. */
class AtLoad : public ::testing::Environment {
public:
    void SetUp() override {
        isRoamingAccepted = roamingWarningAccepted;
        connection = managedConnection;
        own = ownModule;
        resources = resourceModule;
    }

    bool isRoamingAccepted = true;
    HANDLE connection = nullptr;
    HINSTANCE own = nullptr;
    HINSTANCE resources = nullptr;
};

// Belongs to the framework.
auto* const atLoad = new AtLoad;
[[maybe_unused]] const ::testing::Environment* const registered = ::testing::AddGlobalTestEnvironment(atLoad);

}  // namespace

TEST(ProcessObjects, NoRoamingIsAcceptedNothingConnectedAndNoModuleKnownAtLoad) {
    EXPECT_FALSE(atLoad->isRoamingAccepted);
    EXPECT_EQ(nullptr, atLoad->connection);
    EXPECT_EQ(nullptr, atLoad->own);
    EXPECT_EQ(nullptr, atLoad->resources);
}
