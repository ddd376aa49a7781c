// Writes what is installed beside ov-pipeline and says the same as its help: manual pages, and completions
// for bash and zsh. Run by the build: ov-command-texts FOLDER.
#include "Arguments/CommandTable.h"
#include "Arguments/Completion.h"
#include "Arguments/ManualPage.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

using namespace OvPipeline;

void Write(const std::filesystem::path& file, const std::string& text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text) || !stream.flush()) throw std::runtime_error(file.string() + " cannot be written");
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "ov-command-texts FOLDER\n";
        return ExitUsage;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        Write(folder / "man" / "ov-pipeline.1", ManualPage({}));
        for (const CommandRow& row : CommandRows())
            if (std::string_view(row.name) != "help")
                Write(folder / "man" / ("ov-pipeline-" + std::string(row.name) + ".1"), ManualPage(row.name));
        Write(folder / "bash" / "ov-pipeline", BashCompletion());
        Write(folder / "zsh" / "_ov-pipeline", ZshCompletion());
        return ExitOk;
    } catch (const std::exception& error) {
        std::cerr << "ov-command-texts: " << error.what() << "\n";
        return ExitJobFailed;
    }
}
