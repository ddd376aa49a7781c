// ov-make-queue with a server's client program and an ovppd of our own.
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <memory>

namespace {

class MakeQueueTest : public testing::Test {
protected:
    MakeQueueTest() {
        Write("lpadmin", "echo 'lpadmin: PPDs are deprecated' >&2; echo 'lpadmin: it sleeps' >&2; exit 1");
        Write("ovppd", "test \"$1\" = good && echo ppd || { echo 'ovppd: no queue' >&2; exit 1; }");
        std::filesystem::create_directory(m_folder / "tmp");
    }

    /// Its exit code and what it says; the variables stand in front, as a shell has them.
    std::pair<int, std::string> Run(const std::string& variables, const std::string& arguments) const {
        const std::string folder = m_folder.Path().string();
        const std::string command = "PATH=" + folder + ":$PATH TMPDIR=" + folder + "/tmp OV_PPD=" + folder +
                                    "/ovppd " + variables + " " OV_SOURCE_DIR "/PrintServer/ov-make-queue " +
                                    arguments + " 2>&1 </dev/null";
        FILE* const stream = popen(command.c_str(), "r");
        std::string said;
        for (int c = std::fgetc(stream); c != EOF; c = std::fgetc(stream))
            said += static_cast<char>(c);
        return {WEXITSTATUS(pclose(stream)), said};
    }
    void Write(const char* name, const std::string& script) {
        std::filesystem::permissions(m_folder.Write(name, "#!/bin/sh\n" + script + "\n"),
                                     std::filesystem::perms::owner_all);
    }

    TemporaryFolder m_folder;
};

TEST_F(MakeQueueTest, SaysOneLineOfWhatWentWrongAndLeavesNothing) {
    const std::string good = "a --queue good --device a:b";
    for (const auto& [variables, arguments, code, words] : Rows<std::string, std::string, int, std::string>{
             {"", good, 1, "the server does not take the queue: lpadmin: it sleeps"},
             {"", "a --queue bad --device a:b", 1, "no queue"},
             {"OV_PPD=/bin/false", good, 1, "/bin/false cannot be run"},
             {"TMPDIR=/none", good, 1, "no folder for temporary files can be made in /none"},
             {"", "a b " + good, 2, "one queue at a time: a or b?"},
             {"", "'a/b' --queue good --device a:b", 2,
              "a queue's name has letters, digits, and the signs _ . - only"},
             {"", "a --queue good --device '\033[2J\nb'", 2, "?[2J?b is no URI of a device"},
         }) {
        const auto [ended, said] = Run(variables, arguments);
        EXPECT_EQ(code, ended) << words;
        EXPECT_EQ("ov-make-queue: " + words + "\n", said);
    }
    EXPECT_TRUE(std::filesystem::is_empty(m_folder / "tmp"));
}

// A queue that no job could use is none.
TEST_F(MakeQueueTest, DocumentsThatCannotBeUsedMakeNoQueue) {
    const std::filesystem::path queue = m_folder / "queue";
    std::filesystem::copy(OV_SOURCE_DIR "/Samples/Queues/MonoOffice", queue);
    std::string capabilities = TemporaryFolder::Read(queue / "capabilities.xml");
    capabilities.insert(
        capabilities.rfind("</"),
        "<c:Constraint xmlns:c=\"urn:ov-platform:queue-constraints:1\"><c:Choice feature=\"psk:None\" "
        "options=\"psk:A\"/><c:Choice feature=\"psk:PageMediaSize\" options=\"psk:ISOA4\"/>"
        "</c:Constraint>");
    std::filesystem::remove(queue / "capabilities.xml");
    m_folder.Write("queue/capabilities.xml", capabilities);
    const auto [ended, said] =
        Run("OV_PPD=" OV_BINARY_DIR "/bin/ovppd", "a --queue " + queue.string() + " --device a:b");
    EXPECT_EQ(1, ended);
    EXPECT_NE(said.find("constraint: there is no feature"), std::string::npos) << said;
    EXPECT_EQ(said.size() - 1, said.find('\n')) << said;
}

} // namespace
