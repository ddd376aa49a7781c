#include "Support/TemporaryFolder.h"

#include <System/FileError.h>
#include <System/NamelessFile.h>
#include <System/OutputFile.h>
#include <linux/filter.h>
#include <linux/seccomp.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace OvPlatform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class OutputFileTest : public testing::Test {
protected:
    void SetUp() override { m_before = umask(022); }
    void TearDown() override { umask(m_before); }

    static unsigned ModeOf(const std::filesystem::path& file) {
        struct stat state {};
        return stat(file.c_str(), &state) == 0 ? state.st_mode & 07777 : 0;
    }
    static void WriteOut(const std::filesystem::path& file, const std::string& bytes) {
        OutputFile output(file);
        output.Write(bytes.data(), bytes.size());
        output.Finish();
        output.Commit();
    }
    static std::string Refusal(const std::filesystem::path& file) {
        try {
            WriteOut(file, "new");
            return "(none)";
        } catch (const FileError& error) {
            return error.what();
        }
    }

    TemporaryFolder m_folder;
    mode_t m_before = 0;
};

TEST_F(OutputFileTest, HasNoNameUntilItIsCommittedAndLeavesNothingWithout) {
    m_folder.Write("old", "old");
    for (const std::string name : {"new", "old"}) {
        {
            OutputFile output(m_folder / name);
            output.Write("lost", 4);
            output.Finish();
            EXPECT_THAT(m_folder.Names(), ElementsAre("old"));
        }
        EXPECT_THAT(m_folder.Names(), ElementsAre("old"));
    }
    WriteOut(m_folder / "new", "bytes");
    WriteOut(m_folder / "old", "others");
    EXPECT_EQ("bytes", TemporaryFolder::Read(m_folder / "new"));
    EXPECT_EQ("others", TemporaryFolder::Read(m_folder / "old"));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("new", "old"));
}

TEST_F(OutputFileTest, KeepsTheRightsOfWhatItReplaces) {
    WriteOut(m_folder / "new", "");
    EXPECT_EQ(0644u, ModeOf(m_folder / "new"));
    for (const unsigned mode : {0664u, 0400u}) {
        m_folder.Write("old", "old");
        ASSERT_EQ(0, chmod((m_folder / "old").c_str(), mode));
        WriteOut(m_folder / "old", "new");
        EXPECT_EQ(mode, ModeOf(m_folder / "old"));
        EXPECT_EQ("new", TemporaryFolder::Read(m_folder / "old"));
        ASSERT_EQ(0, unlink((m_folder / "old").c_str()));
    }
    // A file that is made, or gets other rights, while this one is written.
    OutputFile output(m_folder / "late");
    m_folder.Write("late", "");
    ASSERT_EQ(0, chmod((m_folder / "late").c_str(), 0640));
    output.Finish();
    output.Commit();
    EXPECT_EQ(0640u, ModeOf(m_folder / "late"));
}

TEST_F(OutputFileTest, FollowsLinksToWhatTheyLeadTo) {
    std::filesystem::create_directory(m_folder / "far");
    m_folder.Write("far/there", "old");
    std::filesystem::create_symlink("far/there", m_folder / "one");
    std::filesystem::create_symlink(m_folder / "one", m_folder / "two");
    std::filesystem::create_symlink("far/notyet", m_folder / "dangling");
    WriteOut(m_folder / "two", "new");
    WriteOut(m_folder / "dangling", "made");
    EXPECT_EQ("new", TemporaryFolder::Read(m_folder / "far/there"));
    EXPECT_EQ("made", TemporaryFolder::Read(m_folder / "far/notyet"));
    for (const char* link : {"one", "two", "dangling"})
        EXPECT_TRUE(std::filesystem::is_symlink(m_folder / link)) << link;
}

// A filter may change the folder of the process.
TEST_F(OutputFileTest, StandsWhereItsNameLedAtTheStart) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(m_folder.Path());
    OutputFile output("out");
    std::filesystem::current_path(before);
    output.Finish();
    output.Commit();
    EXPECT_THAT(m_folder.Names(), ElementsAre("out"));
}

// File systems without nameless files, as the kernel would answer for them. Gives false where the process
// cannot have the kernel's calls filtered.
bool RefuseNamelessFiles() {
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_TMPFILE & ~O_DIRECTORY, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{std::size(program), program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST_F(OutputFileTest, DoesWithoutNamelessFiles) {
    constexpr int noFilter = 100;
    const pid_t child = fork();
    if (child == 0) { // a filter of calls stays for good
        if (!RefuseNamelessFiles()) _exit(noFilter);
        m_folder.Write("old", "old");
        {
            OutputFile lost(m_folder / "old");
            lost.Write("lost", 4);
            lost.Finish();
            EXPECT_EQ(2u, m_folder.Names().size());
        }
        EXPECT_THAT(m_folder.Names(), ElementsAre("old"));
        WriteOut(m_folder / "old", "others");
        EXPECT_EQ("others", TemporaryFolder::Read(m_folder / "old"));
        EXPECT_LE(0, OpenNamelessFile(m_folder.Path()));
        EXPECT_THAT(m_folder.Names(), ElementsAre("old"));
        _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == noFilter) GTEST_SKIP() << "calls to the kernel cannot be filtered here";
    EXPECT_EQ(0, WEXITSTATUS(status));
}

// Nobody who lays a link where the output is going to stand has it written where that leads.
TEST_F(OutputFileTest, DoesNotFollowALinkThatIsLaidMeanwhile) {
    m_folder.Write("secret", "untouched");
    OutputFile output(m_folder / "out");
    output.Write("bytes", 5);
    output.Finish();
    std::filesystem::create_symlink("secret", m_folder / "out");
    output.Commit();
    EXPECT_EQ("untouched", TemporaryFolder::Read(m_folder / "secret"));
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(m_folder / "out")));
}

TEST_F(OutputFileTest, RefusesWhatIsNoFile) {
    std::filesystem::create_directory(m_folder / "folder");
    ASSERT_EQ(0, mkfifo((m_folder / "pipe").c_str(), 0600));
    std::filesystem::create_symlink("loop", m_folder / "loop");
    std::filesystem::create_symlink("/dev/stdout", m_folder / "stdout");
    m_folder.Write("file", "");
    const std::pair<std::filesystem::path, const char*> cases[] = {
        {m_folder / "folder", "folder: this is a folder, not a file to be replaced"},
        {m_folder / "newfolder/", "newfolder/: this names a folder, not a file"},
        {m_folder / "pipe", "this is no file that can be replaced"},
        {m_folder / "loop", "loop: cannot be written: Too many levels of symbolic links"},
        {m_folder / "file/file", "file/file: cannot be written: Not a directory"},
    };
    for (const auto& [file, words] : cases)
        EXPECT_THAT(Refusal(file), HasSubstr(words));

    // The stream of a process is no place in a folder, also where it leads into a file.
    const int before = dup(STDOUT_FILENO);
    ASSERT_TRUE(std::freopen((m_folder / "log").c_str(), "w", stdout));
    const std::string linked = Refusal(m_folder / "stdout");
    std::fflush(stdout);
    dup2(before, STDOUT_FILENO);
    close(before);
    EXPECT_THAT(linked, HasSubstr("this is no file that can be replaced"));
    EXPECT_EQ(6u, m_folder.Names().size());
}

} // namespace
