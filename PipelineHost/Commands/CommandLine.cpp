#include "Commands/CommandLine.h"

#include "Common/Text.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <string_view>

namespace OvPipeline {

namespace {

constexpr const char* generalHelp =
    R"(ov-pipeline plays the print filter pipeline outside a spooler.

  ov-pipeline run [--queue DIR] [--config FILE | --filter MODULE...] [-o OUT] JOB.xps
      sends a job through filters and writes what the device would get
  ov-pipeline ticket JOB.xps [--queue DIR] [--document N] [--page N] [--explain]
      the merged print ticket of the job, a document or a page
  ov-pipeline ticket --devmode FILE [--queue DIR]
      the print ticket that a queue makes of a stored device mode
  ov-pipeline features JOB.xps [--queue DIR] [--document N] [--page N] [--json]
      what the job, a document or a page asks for, feature by feature, and where that was said
  ov-pipeline settings JOB.xps [--queue DIR] [--document N] [--page N] [--json]
  ov-pipeline annotations JOB.xps [--queue DIR] [--page N] [--json]
      what a filter hears when it asks for orientation, sizes, scaling, pages on a sheet and the like
  ov-pipeline header JOB.xps [--queue DIR] [--family NAME | --all] [--why] [--json]
      the instructions that the device gets around the job's pages
  ov-pipeline parts JOB.xps
      the tree of the job's parts, with sizes and tickets
  ov-pipeline policy [--queue DIR | FILE] [--json]
      what an administrator's configuration does, feature by feature
  ov-pipeline queue DIR [--json]
      a queue at a glance: its printer, bags and options, and what print-time programs hear
  ov-pipeline stamp JOB.xps [-o OUT] --text TEXT | --image FILE [--first-page]
      puts a text or a picture on the pages of a job
  ov-pipeline translate NAME [--feature NAME] [--json]
      what a feature or a value is called in tickets, in configurations and by the device

  ov-pipeline COMMAND --help    says more of a command
  ov-pipeline --version

Exit codes: 0 done; 1 the job failed (a filter, the chain or the output), nothing has the name, or a configuration is
faulty; 2 wrong usage; 3 the job's file or the queue folder was refused; 130 cancelled.
)";

constexpr const char* runHelp =
    R"(ov-pipeline run [--queue DIR] [--config FILE | --filter MODULE...] [-o OUT] JOB.xps

Loads the filters, connects them, runs each on its own thread, and writes what the last one gives: a package, or a file
of bytes. OUT appears only when every filter has succeeded. Ctrl-C shuts the filters down and leaves no output.

  --queue DIR          the queue folder of the printer; without it, the sample queue ColorOffice
  --config FILE        a pipeline configuration: <Filters><Filter dll clsid name><Input guid/><Output guid/>...
  --filter MODULE...   filter modules in order; each MODULE or MODULE,{class id}. What ends in .xps, .oxps or .prn is
                       the job. A module's ends are found by asking it. Names without a folder are looked for in the folders of OV_FILTERS and beside ov-pipeline.
                       Without --config and --filter the job goes through as it is.
  -o, --output OUT     the output; filters are told its name. Without it, JOB-printed.xps (.oxps, .prn) in this folder.
                       - stands for the output stream: the output is written there as it comes, and all else that is
                       said goes to the error stream. Of a job that fails, a part of it may have been written then
  --trace              prints every part and step in order, on the error stream

On a terminal, the error stream shows the progress. The summary goes to the output stream.
)";

constexpr const char* ticketHelp =
    R"(ov-pipeline ticket JOB.xps [--queue DIR] [--document N] [--page N] [--explain]
ov-pipeline ticket --devmode FILE [--queue DIR]

Prints the print ticket that holds at a level: the queue's default, with the tickets of the job, the document and the
page laid over it and made valid for the device. Without --document and --page: the job's.

  --queue DIR     the queue folder of the printer; without it, the sample queue ColorOffice
  --document N    the Nth document
  --page N        the Nth page of that document, or without --document of the whole job
  --explain       instead of the ticket, each setting with its value and where that came from: default, job, document,
                  page, changed by validation, or policy: what the administrator enforces over them
  --devmode FILE  instead of a job's tickets, the one that the queue makes of a device mode, with what its attribute bytes
                  say in a comment behind it. FILE holds the bytes of a DEVMODEW as they are stored: little-endian, texts
                  of 16-bit units, dmSize bytes and dmDriverExtra behind them
)";

constexpr const char* featuresHelp =
    R"(ov-pipeline features JOB.xps [--queue DIR] [--document N] [--page N] [--json]

Prints every feature that the driver knows: its number and names, whether the device supports it and needs a value for
it, what the job asks for, and who decided: the ticket, the document settings or the attribute bytes in it, the device's
factory default, or a rule. Below them, the values that hold in the end. Passwords are not shown.

  --queue DIR     the queue folder of the printer; without it, the sample queue ColorOffice
  --document N    the Nth document
  --page N        the Nth page of that document, or without --document of the whole job
  --json          the same for programs
)";

constexpr const char* settingsHelp =
    R"(ov-pipeline settings JOB.xps [--queue DIR] [--document N] [--page N] [--json]

Prints what a filter hears when it asks a snapshot of the tickets at a level: orientation, duplex, job identification,
the sizes of the page and of the paper that comes out, scaling, pages on a sheet, and booklet, with units. "default"
stands where no ticket says anything. Without --document and --page: the job's.

  --queue DIR     the queue folder of the printer; without it, the sample queue ColorOffice
  --document N    the Nth document
  --page N        the Nth page of that document, or without --document of the whole job
  --json          the same for programs
)";

constexpr const char* annotationsHelp =
    R"(ov-pipeline annotations JOB.xps [--queue DIR] [--page N] [--json]

Prints what the driver puts onto a page of the job, texts, time stamps, pictures, Bates and page numbers, the mark of
the job and the lines of a fax, with all that is decided for each: where it stands, what it says, its font and why that
one, the characters that the font keeps, the picture's size; and who asked for it. The filter Stamp draws them.

  --queue DIR     the queue folder of the printer, with the definitions that it keeps; without it, the sample queue
                  ColorOffice
  --page N        the Nth page of the job; without it, the first
  --json          the same for programs
)";

constexpr const char* headerHelp =
    R"(ov-pipeline header JOB.xps [--queue DIR] [--family NAME | --all] [--why] [--json]

Prints what a family of devices gets around the pages of the job: the PJL header that stands before them, the
PostScript that sets the device up (or the page ticket of PCLm), and the comments behind them.

  --queue DIR      the queue folder of the printer; without it, the sample queue ColorOffice
  --family NAME    the family: Kestrel, Harrier, Osprey, Merlin, MerlinPCL6, LowEndPS, LowEndPCL6, LowEndPCLm; without
                   it, the one that the queue names (its driver property DeviceFamily)
  --all            all families, side by side: each line once, with a mark for each family that gets it
  --why            below each line or command, the features without which it would not stand there, with their values
                   and who decided; with --all, one family below the other
  --json           the same for programs, with the texts whole
)";

constexpr const char* partsHelp =
    R"(ov-pipeline parts JOB.xps

Prints the parts of a job as a tree: documents, pages, and what they use, with sizes and print tickets.
)";

constexpr const char* policyHelp =
    R"(ov-pipeline policy [--queue DIR | FILE] [--json]

Reads an administrator's configuration as the filters do, and prints what each feature in it does: what is written into
tickets and over what, what decides only which types of jobs there are, what the driver knows and enforces nowhere, and
what it does not know. A fault is one line on the error stream: what stands before it holds, what stands behind it is
lost. The exit code is 1 then.

  FILE            a configuration by itself, in UTF-8, or in UTF-16 with a byte order mark
  --queue DIR     the queue folder whose queue properties hold the configuration; without both, the sample queue
                  ColorOffice
  --json          the same for programs
)";

constexpr const char* queueHelp =
    R"(ov-pipeline queue DIR [--json]

Prints a queue folder at a glance: the printer; what is in the bags of the driver, of the queue and of the current user,
by name and kind, with short values or sizes; the installable options under the device's names (CPSS), also those that
the bag has and the device does not know; and what programs that run beside a job hear when they ask the queue.
Settings that cannot be read are one line on the error stream; the exit code is 1 then.

  DIR       the queue folder
  --json    the same for programs, with texts whole
)";

constexpr const char* stampHelp =
    R"(ov-pipeline stamp JOB.xps [-o OUT] --text TEXT | --image FILE [--first-page]

Puts a text or a picture over what is on the pages of a job's first document, and writes the job; all else in it stays
as it is. OUT appears only when everything has been written; it may be JOB.xps itself. Lengths are in points (72 to the
inch), from the top left corner of the page.

  -o, --output OUT    the output; without it, JOB-stamped.xps in this folder
  --first-page        only on the first page
  --at X,Y            where the text's baseline begins, or the picture's top left corner; without it, half an inch
                      from the edges

  --text TEXT         the text, in one line
  --font NAME         its font; without it, Arial if that has all its characters, or the first font of the system that
                      has them. A font that the system lacks is replaced by the system
  --size POINTS       from 1 to 1000; without it, 24
  --color RRGGBB      in hexadecimal; with AARRGGBB, how opaque it is too; without it, black

  --image FILE        a picture that ends in .jpg, .png, .gif or .bmp (of an animation, the first frame)
  --width POINTS      how wide it gets, in proportion; without it, as large as the picture says (300 dots per inch for
                      one that does not)
  --opacity NUMBER    from 0, not to be seen, to 1
)";

constexpr const char* translateHelp =
    R"(ov-pipeline translate NAME [--feature NAME] [--json]

Prints what a feature or a value of a feature is called in print tickets, in the administrator's configuration and in
the device's own vocabulary (CPSS), with its number and enumerator; of a feature, also its values. NAME is any of these,
in upper or lower case, with a prefix or without. Everything that has the name is shown.

  --feature NAME    only values of that feature
  --json            the same for programs

  ov-pipeline translate PageOutputColor
  ov-pipeline translate 5421
  ov-pipeline translate --feature sides two-sided-long-edge
)";

struct CommandName {
    const char* name;
    const char* help;
};
constexpr std::array commandTable{CommandName{"run", runHelp},
                                  CommandName{"ticket", ticketHelp},
                                  CommandName{"features", featuresHelp},
                                  CommandName{"settings", settingsHelp},
                                  CommandName{"annotations", annotationsHelp},
                                  CommandName{"header", headerHelp},
                                  CommandName{"parts", partsHelp},
                                  CommandName{"policy", policyHelp},
                                  CommandName{"queue", queueHelp},
                                  CommandName{"stamp", stampHelp},
                                  CommandName{"translate", translateHelp}};

struct OptionName {
    const char* name;
    const char* commands; // that know it
    bool hasValue;
};
constexpr std::array optionTable{
    OptionName{"--queue", "run ticket features settings annotations header policy", true},
    OptionName{"--config", "run", true},
    OptionName{"--filter", "run", true},
    OptionName{"--output", "run stamp", true},
    OptionName{"-o", "run stamp", true},
    OptionName{"--text", "stamp", true},
    OptionName{"--image", "stamp", true},
    OptionName{"--first-page", "stamp", false},
    OptionName{"--font", "stamp", true},
    OptionName{"--size", "stamp", true},
    OptionName{"--color", "stamp", true},
    OptionName{"--at", "stamp", true},
    OptionName{"--width", "stamp", true},
    OptionName{"--opacity", "stamp", true},
    OptionName{"--trace", "run", false},
    OptionName{"--document", "ticket features settings", true},
    OptionName{"--page", "ticket features settings annotations", true},
    OptionName{"--explain", "ticket", false},
    OptionName{"--devmode", "ticket", true},
    OptionName{"--feature", "translate", true},
    OptionName{"--family", "header", true},
    OptionName{"--all", "header", false},
    OptionName{"--why", "header", false},
    OptionName{"--json", "features settings annotations header policy queue translate", false},
};

const OptionName& FindOption(const std::string& name, const std::string& command) {
    for (const OptionName& option : optionTable)
        if (name == option.name && std::string_view(option.commands).find(command) != std::string_view::npos)
            return option;
    throw UsageError("ov-pipeline " + command + " has no option " + name);
}

unsigned long Number(const std::string& option, const std::string& text) {
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0)
        throw UsageError(option + " wants a number from 1, not \"" + text + "\"");
    return number;
}

// Behind --filter stand modules and the job. What is called like a job, or like an output, is no module.
bool IsCalledLikeAJob(const std::string& argument) {
    const std::string extension = LowerAscii(std::filesystem::path(argument).extension().string());
    return extension == ".xps" || extension == ".oxps" || extension == ".prn";
}

void Once(std::string& place, const std::string& option, std::string value) {
    if (!place.empty()) throw UsageError(option + " is given twice");
    if (value.empty()) throw UsageError(option + " is given an empty value");
    place = std::move(value);
}

// Those that are one text, given once.
std::string* TextOf(CommandOptions& options, std::string_view option) {
    const struct {
        std::string_view option;
        std::string* place;
    } places[] = {
        {"--queue", &options.queue},   {"--config", &options.config},   {"--output", &options.output},
        {"-o", &options.output},       {"--feature", &options.feature}, {"--devmode", &options.devmode},
        {"--family", &options.family}, {"--text", &options.text},       {"--image", &options.image},
        {"--font", &options.font},     {"--size", &options.size},       {"--color", &options.color},
        {"--at", &options.at},         {"--width", &options.width},     {"--opacity", &options.opacity}};
    for (const auto& each : places)
        if (each.option == option) return each.place;
    return nullptr;
}

void Apply(CommandOptions& options, const std::string& option, std::string value) {
    if (std::string* const place = TextOf(options, option); place != nullptr)
        Once(*place, option, std::move(value));
    else if (option == "--filter" && value.empty())
        throw UsageError(option + " is given an empty value");
    else if (option == "--filter")
        options.filters.push_back(std::move(value));
    else if (option == "--document")
        options.document = Number(option, value);
    else if (option == "--page")
        options.page = Number(option, value);
    else if (option == "--all")
        options.all = true;
    else if (option == "--first-page")
        options.firstPage = true;
    else if (option == "--why")
        options.why = true;
    else if (option == "--trace")
        options.trace = true;
    else if (option == "--json")
        options.json = true;
    else
        options.explain = true;
}

} // namespace

CommandOptions ParseCommandLine(const std::vector<std::string>& arguments) {
    CommandOptions options;
    if (arguments.empty())
        throw UsageError("which command: run, ticket, features, settings, annotations, header, parts, "
                         "policy, queue, stamp or translate?");
    std::vector<std::string> loose;
    bool afterFilter = false; // loose arguments there are further modules, but for the last
    std::size_t moduleCount = 0;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            options.wantsHelp = true;
        } else if (argument == "--version") {
            options.wantsVersion = true;
        } else if (options.command.empty()) {
            for (const CommandName& command : commandTable)
                if (argument == command.name) options.command = argument;
            if (options.command.empty()) throw UsageError("there is no command " + argument);
        } else if (argument.size() > 1 && argument[0] == '-') {
            const OptionName& option = FindOption(argument, options.command);
            if (option.hasValue && i + 1 == arguments.size()) throw UsageError(argument + " wants a value");
            Apply(options, argument, option.hasValue ? arguments[++i] : std::string());
            afterFilter = argument == "--filter";
        } else if (afterFilter && !IsCalledLikeAJob(argument)) {
            // The last of all is the job; until one more comes, this may be it.
            options.filters.push_back(argument);
            moduleCount = options.filters.size();
        } else {
            loose.push_back(argument);
        }
    }
    if (options.wantsHelp || options.wantsVersion) return options;
    if (loose.empty() && moduleCount > 0) {
        loose.push_back(options.filters[moduleCount - 1]);
        options.filters.erase(options.filters.begin() + static_cast<std::ptrdiff_t>(moduleCount - 1));
    }
    if (options.command == "translate") {
        if (loose.empty() || loose[0].empty())
            throw UsageError("which name? ov-pipeline translate wants one");
        if (loose.size() > 1) throw UsageError("one name at a time: " + loose[0] + " or " + loose[1] + "?");
        options.name = loose[0];
        return options;
    }
    if (options.command == "queue") {
        if (loose.empty() || loose[0].empty())
            throw UsageError("which queue? ov-pipeline queue wants a folder");
        if (loose.size() > 1) throw UsageError("one queue at a time: " + loose[0] + " or " + loose[1] + "?");
        options.queue = loose[0];
        return options;
    }
    if (options.command == "policy") {
        if (loose.size() > 1)
            throw UsageError("one configuration at a time: " + loose[0] + " or " + loose[1] + "?");
        if (!loose.empty() && !options.queue.empty())
            throw UsageError("a file and --queue exclude each other");
        if (!loose.empty()) options.job = loose[0];
        return options;
    }
    if (!options.devmode.empty()) {
        if (!loose.empty() || options.explain || options.document || options.page)
            throw UsageError("--devmode stands for a job: it goes with --queue alone");
        return options;
    }
    if (loose.empty()) throw UsageError("which job? ov-pipeline " + options.command + " wants an XPS file");
    if (loose.size() > 1) throw UsageError("one job at a time: " + loose[0] + " or " + loose[1] + "?");
    if (!options.config.empty() && !options.filters.empty())
        throw UsageError("--config and --filter exclude each other");
    if (!options.family.empty() && options.all) throw UsageError("--family and --all exclude each other");
    options.job = loose[0];
    return options;
}

std::string HelpText(const std::string& command) {
    for (const CommandName& known : commandTable)
        if (command == known.name) return known.help;
    return generalHelp;
}

} // namespace OvPipeline
