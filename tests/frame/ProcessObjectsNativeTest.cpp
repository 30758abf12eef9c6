/* What the process-wide values are before anything has been done with the library. */
#include <gtest/gtest.h>

#include "frame/ResourceModule.h"
#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"

namespace {

// Taken before the first test.
const struct {
    bool isRoamingAccepted = roamingWarningAccepted;
    HANDLE connection = managedConnection;
    HINSTANCE own = ownModule;
    HINSTANCE resources = resourceModule;
} atLoad;

}  // namespace

TEST(ProcessObjects, NoRoamingIsAcceptedNothingConnectedAndNoModuleKnownAtLoad) {
    EXPECT_FALSE(atLoad.isRoamingAccepted);
    EXPECT_EQ(nullptr, atLoad.connection);
    EXPECT_EQ(nullptr, atLoad.own);
    EXPECT_EQ(nullptr, atLoad.resources);
}
