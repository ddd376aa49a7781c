#include "Arguments/CommandTable.h"

#include <algorithm>
#include <array>

namespace OvPipeline {

namespace {

using Options = CommandOptions;

constexpr auto optionRows = std::to_array<OptionRow>({
    {"--queue", nullptr, "DIR", Naming::Folder, &Options::queue,
     "the queue folder of the printer, or the name of a sample queue; without it, the sample queue "
     "ColorOffice"},
    {"--config", nullptr, "FILE", Naming::File, &Options::config,
     "a pipeline configuration: the filters and how they are connected"},
    {"--filter", nullptr, "MODULE...", Naming::Module, &Options::filters, "filter modules in order"},
    {"--output", "-o", "OUT", Naming::File, &Options::output, "the output"},
    {"--ticket", nullptr, "FILE", Naming::Ticket, &Options::ticket,
     "a print ticket that is laid over the job's: what it says of a feature or a parameter takes the place "
     "of what "
     "the tickets of job, documents and pages say of it. The administrator's configuration still holds over "
     "it"},
    {"--copies", nullptr, "N", Naming::Nothing, &Options::copies,
     "so many copies, whatever the job's ticket says"},
    {"--pages", nullptr, "LIST", Naming::Nothing, &Options::pages,
     "only these pages, counted through the whole job: 2-5,9,12-"},
    {"--title", nullptr, "TEXT", Naming::Nothing, &Options::title,
     "what the job is called; without it, the file's name"},
    {"--user", nullptr, "NAME", Naming::Nothing, &Options::user, "whose job it is; without it, yours"},
    {"--jobs", "-j", "N", Naming::Nothing, &Options::parallel, "so many jobs at a time; without it, one"},
    {"--document", nullptr, "N", Naming::Nothing, &Options::document, "the Nth document"},
    {"--page", nullptr, "N", Naming::Nothing, &Options::page,
     "the Nth page of that document, or without --document of the whole job"},
    {"--explain", nullptr, nullptr, Naming::Nothing, &Options::explain,
     "each setting with where it came from"},
    {"--devmode", nullptr, "FILE", Naming::File, &Options::devmode, "a stored device mode in place of a job"},
    {"--family", nullptr, "NAME", Naming::Family, &Options::family, "the family of devices"},
    {"--all", nullptr, nullptr, Naming::Nothing, &Options::all, "all families, side by side"},
    {"--why", nullptr, nullptr, Naming::Nothing, &Options::why, "what is behind each line"},
    {"--feature", nullptr, "NAME", Naming::Nothing, &Options::feature, "only values of that feature"},
    {"--first-page", nullptr, nullptr, Naming::Nothing, &Options::firstPage, "only on the first page"},
    {"--at", nullptr, "X,Y", Naming::Nothing, &Options::at,
     "where the text's baseline begins, or the picture's top left corner; without it, half an inch from the "
     "edges"},
    {"--text", nullptr, "TEXT", Naming::Nothing, &Options::text, "the text, in one line"},
    {"--font", nullptr, "NAME", Naming::Nothing, &Options::font,
     "the text's font; without it, Arial if that has all its characters, or the first font of the system "
     "that has "
     "them. A font that the system lacks is replaced by the system"},
    {"--size", nullptr, "POINTS", Naming::Nothing, &Options::size,
     "of the text, from 1 to 1000; without it, 24"},
    {"--color", nullptr, "RRGGBB", Naming::Nothing, &Options::color,
     "of the text, in hexadecimal; with AARRGGBB, how opaque it is too; without it, black"},
    {"--image", nullptr, "FILE", Naming::File, &Options::image,
     "a picture that ends in .jpg, .png, .gif or .bmp (of an animation, the first frame)"},
    {"--width", nullptr, "POINTS", Naming::Nothing, &Options::width,
     "how wide the picture gets, in proportion; without it, as large as the picture says (300 dots per inch "
     "for one "
     "that does not)"},
    {"--opacity", nullptr, "NUMBER", Naming::Nothing, &Options::opacity,
     "of the picture, from 0, not to be seen, to 1"},
    {"--ignore-times", nullptr, nullptr, Naming::Nothing, &Options::ignoreTimes,
     "leaves out the times at which the files were made"},
    {"--no-pictures", nullptr, nullptr, Naming::Nothing, &Options::noPictures, "without pictures of pages"},
    {"--trace", nullptr, nullptr, Naming::Nothing, &Options::trace,
     "prints every part and step in order, on the error stream"},
    {"--json", nullptr, nullptr, Naming::Nothing, &Options::json, "the same for programs"},
    {"--quiet", "-q", nullptr, Naming::Nothing, &Options::quiet, "no word but of what failed"},
    {"--help", "-h", nullptr, Naming::Nothing, &Options::wantsHelp, "this"},
});

// All commands know them.
constexpr auto commonOptions = std::to_array<KnownOption>({{"--quiet"}, {"--help"}});

constexpr auto runOptions = std::to_array<KnownOption>({
    {"--queue"},
    {"--config", "a pipeline configuration: <Filters><Filter dll clsid name><Input guid/><Output guid/>..."},
    {"--filter",
     "filter modules in order; each MODULE or MODULE,{class id}. What ends in .xps, .oxps or .prn is a job. "
     "A module's ends are found by asking it. Names without a folder are looked for in the folders of "
     "OV_FILTERS, in those of the installed filters, and beside ov-pipeline. Without --config and --filter "
     "the job goes through as it is"},
    {"--output",
     "the output; filters are told its name. Without it, JOB-printed.xps (.oxps, .prn) in this folder. Of "
     "several jobs, the folder for them. - stands for the output stream: the output is written there as it "
     "comes, and all else that is said goes to the error stream. Of a job that fails, a part of it may have "
     "been written then"},
    {"--pages"},
    {"--ticket"},
    {"--copies"},
    {"--title"},
    {"--user"},
    {"--jobs", "so many jobs at a time, where there are several; without it, one"},
    {"--json", "the summary for programs"},
    {"--trace"},
});

constexpr const char* ofPages =
    "of these pages, one after the other, counted through the whole job: 2-5,9,12-";

constexpr auto levelOptions = std::to_array<KnownOption>(
    {{"--queue"}, {"--document"}, {"--page"}, {"--pages", ofPages}, {"--ticket"}, {"--copies"}, {"--json"}});

constexpr auto ticketOptions = std::to_array<KnownOption>({
    {"--queue"},
    {"--document"},
    {"--page"},
    {"--ticket"},
    {"--copies"},
    {"--explain",
     "instead of the ticket, each setting with its value and where that came from: default, job, document, "
     "page, changed by validation, or policy: what the administrator enforces over them"},
    {"--devmode",
     "instead of a job's tickets, the one that the queue makes of a device mode, with what its attribute "
     "bytes say in a comment behind it. FILE holds the bytes of a DEVMODEW as they are stored: "
     "little-endian, texts of 16-bit units, dmSize bytes and dmDriverExtra behind them"},
    {"--json", "what --explain says, for programs"},
});

constexpr auto annotationsOptions = std::to_array<KnownOption>({
    {"--queue",
     "the queue folder of the printer, with the definitions that it keeps; without it, the sample queue "
     "ColorOffice"},
    {"--page", "the Nth page of the job; without it, the first"},
    {"--pages", ofPages},
    {"--json"},
});

constexpr auto headerOptions = std::to_array<KnownOption>({
    {"--queue"},
    {"--family",
     "the family: Kestrel, Harrier, Osprey, Merlin, MerlinPCL6, LowEndPS, LowEndPCL6 or LowEndPCLm; without "
     "it, the one that the queue names (its driver property DeviceFamily)"},
    {"--all", "all families, side by side: each line once, with a mark for each family that gets it"},
    {"--why",
     "below each line or command, the features without which it would not stand there, with their values and "
     "who decided; with --all, one family below the other"},
    {"--ticket"},
    {"--copies"},
    {"--json", "the same for programs, with the texts whole"},
});

constexpr auto partsOptions = std::to_array<KnownOption>({{"--json"}});

constexpr auto policyOptions = std::to_array<KnownOption>({
    {"--queue",
     "the queue folder whose queue properties hold the configuration; without it and FILE, the sample queue "
     "ColorOffice"},
    {"--json"},
});

constexpr auto queueOptions =
    std::to_array<KnownOption>({{"--json", "the same for programs, with texts whole"}});

constexpr auto capabilitiesOptions = std::to_array<KnownOption>({
    {"--queue"},
    {"--feature", "only the feature or parameter of that name, as tickets have it or as it is displayed"},
    {"--json"},
});

constexpr auto diffOptions = std::to_array<KnownOption>({{"--ignore-times"}, {"--json"}});

constexpr auto reportOptions = std::to_array<KnownOption>({
    {"--queue"},
    {"--output", "the report; without it, JOB-report.html in this folder. - stands for the output stream"},
    {"--family",
     "the family whose instructions are shown; without it, the one that the queue names. The pages are "
     "printed for the queue's own"},
    {"--config", "the filters that the job runs through, as in a pipeline configuration"},
    {"--filter",
     "the filters that the job runs through, in order. Without --config and --filter, DeviceStream where its "
     "pages can be drawn, else PassThrough"},
    {"--pages"},
    {"--ticket"},
    {"--copies"},
    {"--no-pictures",
     "without pictures of pages, which are drawn by mutool or xpstopng, and those of the output by gs, where "
     "these programs are installed"},
});

constexpr auto stampOptions = std::to_array<KnownOption>({
    {"--output", "the output; without it, JOB-stamped.xps in this folder"},
    {"--first-page"},
    {"--at"},
    {"--text"},
    {"--font"},
    {"--size"},
    {"--color"},
    {"--image"},
    {"--width"},
    {"--opacity"},
});

constexpr auto translateOptions = std::to_array<KnownOption>({{"--feature"}, {"--json"}});

constexpr OperandRow oneJob{"JOB.xps", Naming::Job, "job", "an XPS file", 1, 1};
constexpr OperandRow jobOrTicket{
    "JOB.xps|TICKET.xml", Naming::Ticket, "job", "an XPS file or a print ticket", 1, 1};

constexpr const char* runText =
    R"(Loads the filters, connects them, runs each on its own thread, and writes what the last one gives: a package, or
a file of bytes. OUT appears only when every filter has succeeded. Ctrl-C shuts the filters down and leaves no
output.

Several jobs run one after the other, or by --jobs at the same time, each in a process of its own: one that
fails takes none with it. A table says at the end what became of each. The exit code is 0 where all are done,
else that of those that are not, or 1 where they do not agree.

On a terminal, the error stream shows the progress. The summary goes to the output stream.)";

constexpr const char* ticketText =
    R"(Prints the print ticket that holds at a level: the queue's default, with the tickets of the job, the document
and the page laid over it and made valid for the device. Without --document and --page: the job's. A print
ticket in a file of its own is taken for the ticket of a job.)";

constexpr const char* featuresText =
    R"(Prints every feature that the driver knows: its number and names, whether the device supports it and needs a
value for it, what the job asks for, and who decided: the ticket, the document settings or the attribute bytes
in it, the device's factory default, or a rule. Below them, the values that hold in the end. Passwords are not
shown. A print ticket in a file of its own is taken for the ticket of a job.)";

constexpr const char* settingsText =
    R"(Prints what a filter hears when it asks a snapshot of the tickets at a level: orientation, duplex, job
identification, the sizes of the page and of the paper that comes out, scaling, pages on a sheet, and booklet,
with units. "default" stands where no ticket says anything. Without --document and --page: the job's.)";

constexpr const char* annotationsText =
    R"(Prints what the driver puts onto a page of the job, texts, time stamps, pictures, Bates and page numbers, the
mark of the job and the lines of a fax, with all that is decided for each: where it stands, what it says, its
font and why that one, the characters that the font keeps, the picture's size; and who asked for it. The filter
Stamp draws them.)";

constexpr const char* headerText =
    R"(Prints what a family of devices gets around the pages of the job: the PJL header that stands before them, the
PostScript that sets the device up (or the page ticket of PCLm), and the comments behind them.)";

constexpr const char* partsText =
    R"(Prints the parts of a job as a tree: documents, pages, and what they use, with sizes and print tickets.)";

constexpr const char* policyText =
    R"(Reads an administrator's configuration as the filters do, and prints what each feature in it does: what is
written into tickets and over what, what decides only which types of jobs there are, what the driver knows and
enforces nowhere, and what it does not know. A fault is one line on the error stream: what stands before it
holds, what stands behind it is lost. The exit code is 1 then.

FILE is a configuration by itself, in UTF-8, or in UTF-16 with a byte order mark.)";

constexpr const char* queueText =
    R"(Prints a queue folder at a glance: the printer; what is in the bags of the driver, of the queue and of the
current user, by name and kind, with short values or sizes; the installable options under the device's names
(CPSS), also those that the bag has and the device does not know; and what programs that run beside a job hear
when they ask the queue. Settings that cannot be read are one line on the error stream; the exit code is 1 then.)";

constexpr const char* capabilitiesText =
    R"(Prints what a queue offers: each feature with its options, the default marked with *, and sizes in millimetres
and inches; parameters with their bounds, units and defaults; options that are not available; choices that go
not together; and what the administrator's configuration makes of a feature. A configuration that cannot be read
to its end is one line on the error stream; the exit code is 1 then.)";

constexpr const char* diffText =
    R"(Compares two files of one kind by what they mean. Print tickets: settings by their qualified names, whatever the
prefixes, order and white space. XPS packages: documents, pages and their markup, tickets, other parts by their
content, content types and relationships. Device streams: the lines of the PJL header, the set-up, comments, and
the pages.

The exit code is 0 where there is no difference, 1 where there are some, 2 for wrong usage, as for files of
different kinds, and 3 for a file that cannot be read.)";

constexpr const char* reportText =
    R"(Writes what is known of a job into one file that a browser shows, without a server or other files: its documents
and pages, with pictures of pages as they came and as they go out; the settings of each level and where they
came from; what is put onto the pages; what a device gets around them and why; and how long each filter took,
for which the job is run through the filters once.)";

constexpr const char* stampText =
    R"(Puts a text or a picture over what is on the pages of a job's first document, and writes the job; all else in it
stays as it is. OUT appears only when everything has been written; it may be JOB.xps itself. Lengths are in
points (72 to the inch), from the top left corner of the page.)";

constexpr const char* translateText =
    R"(Prints what a feature or a value of a feature is called in print tickets, in the administrator's configuration
and in the device's own vocabulary (CPSS), with its number and enumerator; of a feature, also its values. NAME
is any of these, in upper or lower case, with a prefix or without. Everything that has the name is shown.

  ov-pipeline translate PageOutputColor
  ov-pipeline translate 5421
  ov-pipeline translate --feature sides two-sided-long-edge)";

constexpr auto commandRows = std::to_array<CommandRow>({
    {"run",
     "sends jobs through filters and writes what the device would get",
     "run [--queue DIR] [--config FILE | --filter MODULE...] [-o OUT] JOB.xps...",
     runText,
     {"JOB.xps", Naming::Job, "job", "an XPS file", 1, 0},
     runOptions},
    {"ticket", "the merged print ticket of the job, a document or a page",
     "ticket [--queue DIR] [--document N] [--page N] [--explain] JOB.xps|TICKET.xml\n"
     "ticket --devmode FILE [--queue DIR]",
     ticketText, jobOrTicket, ticketOptions},
    {"features", "what the job, a document or a page asks for, feature by feature, and where that was said",
     "features [--queue DIR] [--document N] [--page N] [--json] JOB.xps|TICKET.xml", featuresText,
     jobOrTicket, levelOptions},
    {"settings",
     "what a filter hears when it asks for orientation, sizes, scaling, pages on a sheet and the "
     "like",
     "settings [--queue DIR] [--document N] [--page N] [--json] JOB.xps|TICKET.xml", settingsText,
     jobOrTicket, levelOptions},
    {"annotations", "what the driver puts onto a page of the job, and who asked for it",
     "annotations [--queue DIR] [--page N] [--json] JOB.xps", annotationsText, oneJob, annotationsOptions},
    {"header", "the instructions that the device gets around the job's pages",
     "header [--queue DIR] [--family NAME | --all] [--why] [--json] JOB.xps|TICKET.xml", headerText,
     jobOrTicket, headerOptions},
    {"parts", "the tree of the job's parts, with sizes and tickets", "parts [--json] JOB.xps", partsText,
     oneJob, partsOptions},
    {"policy",
     "what an administrator's configuration does, feature by feature",
     "policy [--queue DIR | FILE] [--json]",
     policyText,
     {"FILE", Naming::File, "configuration", "a file", 0, 1},
     policyOptions},
    {"queue",
     "a queue at a glance: its printer, bags and options, and what print-time programs hear",
     "queue [--json] DIR",
     queueText,
     {"DIR", Naming::Folder, "queue", "a folder", 1, 1},
     queueOptions},
    {"capabilities",
     "what a queue offers: features with options and defaults, parameters, and what goes not "
     "together",
     "capabilities [--queue DIR] [--feature NAME] [--json]",
     capabilitiesText,
     {},
     capabilitiesOptions},
    {"diff",
     "what is different between two print tickets, packages or device streams, by what they mean",
     "diff [--ignore-times] [--json] A B",
     diffText,
     {"A B", Naming::File, "pair of files", "two of one kind", 2, 2},
     diffOptions},
    {"report",
     "one file about a job for a browser: pictures of its pages, settings, annotations, "
     "instructions, times",
     "report [--queue DIR] [--config FILE | --filter MODULE...] [--pages LIST] [--no-pictures] [-o OUT] "
     "JOB.xps",
     reportText, oneJob, reportOptions},
    {"stamp", "puts a text or a picture on the pages of a job",
     "stamp [-o OUT] --text TEXT | --image FILE [--first-page] JOB.xps", stampText, oneJob, stampOptions},
    {"translate",
     "what a feature or a value is called in tickets, in configurations and by the device",
     "translate [--feature NAME] [--json] NAME",
     translateText,
     {"NAME", Naming::Nothing, "name", "one", 1, 1},
     translateOptions},
    {"help",
     "says more of a command",
     "help [COMMAND]",
     "Prints what --help behind the command prints.",
     {"COMMAND", Naming::Command, "command", "one", 0, 1},
     {}},
});

const OptionRow& RowOf(const KnownOption& known) {
    return *std::ranges::find(optionRows, std::string_view(known.name), &OptionRow::name);
}

} // namespace

std::span<const CommandRow> CommandRows() { return commandRows; }

const CommandRow* FindCommand(std::string_view name) {
    const auto* const found = std::ranges::find(commandRows, name, &CommandRow::name);
    return found == commandRows.end() ? nullptr : found;
}

std::span<const OptionRow> OptionRows() { return optionRows; }

const OptionRow* FindOption(const CommandRow& command, std::string_view name) {
    for (const ShownOption& known : OptionsOf(command))
        if (name == known.option->name ||
            (known.option->shortName != nullptr && name == known.option->shortName))
            return known.option;
    return nullptr;
}

std::vector<ShownOption> OptionsOf(const CommandRow& command) {
    std::vector<ShownOption> options;
    const auto add = [&](std::span<const KnownOption> known) {
        for (const KnownOption& each : known) {
            const OptionRow& row = RowOf(each);
            options.push_back({&row, each.help != nullptr ? each.help : row.help});
        }
    };
    add(command.options);
    add(commonOptions);
    return options;
}

} // namespace OvPipeline
