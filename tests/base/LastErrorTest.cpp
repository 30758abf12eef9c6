#include "base/LastError.h"

#include <gtest/gtest.h>

TEST(LastError, FirstCauseIsKept) {
    FirstFailure failure;
    EXPECT_EQ(0U, failure.cause);
    EXPECT_FALSE(failure.Note(12007));
    EXPECT_FALSE(failure.Note(6));
    EXPECT_EQ(12007U, failure.cause);
}

TEST(LastError, NoCauseDoesNotCountAsTheFirst) {
    FirstFailure failure;
    failure.Note(0);
    failure.Note(5);
    EXPECT_EQ(5U, failure.cause);
}

TEST(LastError, CauseOfAFailedCallIsItsCode) {
    SetLastError(12029);
    EXPECT_EQ(12029U, ErrorOfFailedCall());
    FirstFailure failure;
    EXPECT_FALSE(failure.NoteFailedCall());
    EXPECT_EQ(12029U, failure.cause);
}

TEST(LastError, FailedCallThatLeftNoCodeIsAGeneralFailure) {
    SetLastError(0);
    EXPECT_EQ(DWORD{ERROR_GEN_FAILURE}, ErrorOfFailedCall());
}

TEST(LastError, IsLeftTogetherWithTheResult) {
    SetLastError(0);
    EXPECT_EQ(-1, LeaveError(259, -1));
    EXPECT_EQ(259U, GetLastError());
    EXPECT_EQ(1, LeaveError(0, 1));
    EXPECT_EQ(0U, GetLastError());
}
