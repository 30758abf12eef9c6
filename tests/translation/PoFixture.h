/* What tests of .po files share. */
#pragma once

#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

#include "Samples.h"
#include "files/PoFile.h"
#include "service/TemporaryFolder.h"

class PoFileTest : public testing::Test {
protected:
    Catalogue Read(const std::string& bytes) {
        const std::filesystem::path path = folder.Path() / "a.po";
        std::ofstream(path, std::ios::binary) << bytes;
        complaints.clear();
        return ReadPo(path.string(), complaints);
    }

    std::vector<std::string> ComplaintsOf(const std::string& bytes) {
        Read(bytes);
        return Sentences(complaints);
    }

    /* The bytes of what `bytes` are read as. */
    std::string Rewritten(const std::string& bytes) {
        const std::string written = WritePo(Read(bytes), complaints);
        EXPECT_THAT(Sentences(complaints), testing::IsEmpty());
        return written;
    }

    TemporaryFolder folder;
    Complaints complaints;
};

/* Of a file that tells nothing. */
inline const std::string plainHead =
    "msgid \"\"\nmsgstr \"\"\n\"MIME-Version: 1.0\\n\"\n\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
    "\"Content-Transfer-Encoding: 8bit\\n\"\n";
