// SPDX-License-Identifier: Apache-2.0
#include "words/makers.h"

namespace fixtop {

namespace {

constexpr WordRow kWords[] = {
    {"ls", "List the names of a node's children, one a line",
     "With --json an object a line: name, path, type.", View::kEither, Place::kBoth, MakeLs},
    {"tree", "Show a node and everything below it",
     "A value that is specified is shown as \"name := value unit\", any other as \"name = value\n"
     "unit\", and a node without one with its type. An attachment is shown as \"name -> target\";\n"
     "--attachments goes on below it. A result of a recorded case that is older than a change is\n"
     "followed by (stale). With --json an object with path, name, type, value, uom, status and\n"
     "children.",
     View::kEitherInUnits, Place::kBoth, MakeTree},
    {"attrs", "List a node's attributes", "A line each: name, tab, value.", View::kEither,
     Place::kBoth, MakeAttrs},
    {"get", "Read values, one a line",
     "An empty line is NULL; of an object or a list, which have no value, a message says what it\n"
     "holds, but not for paths of standard input. A path may end in an attribute: "
     "\"...Feed(type)\". The path - reads\n"
     "paths from standard input, one a line. A path that leads nowhere gives no line, a message,\n"
     "and exit status 1; the others are still read, and so for a number that can't be had in\n"
     "--unit. A path that leads to several nodes is refused, and they are named, unless --first "
     "or\n"
     "--all tells which are meant. With --json an object a line: path, value, uom, status, of an "
     "object "
     "type\n"
     "and holds too; or path and error. A result of a recorded case that is older than a change "
     "has a message, in JSON\n"
     "\"stale\": true.",
     View::kEither, Place::kBoth, MakeGet},
    {"find", "List the paths of all nodes that match a pattern",
     "A pattern is a path with wildcards and filters, of which every match is followed:\n"
     "  appModel.FlowSheetObjects.Streams.*[(type)=MaterialStreamObject].Temperature\n"
     "Beside the language of paths * stands for any text within a name, and ** for any levels:\n"
     "  'appModel.**.*Temp*'\n"
     "What it writes can be given to get. A name that has a * stands in quotes to be no pattern:\n"
     "  'appModel.FlowSheetObjects.Streams.\"a*b\"'\n"
     "Exit status 1 when nothing matches.",
     View::kEither, Place::kBoth, MakeFind},
    {"table", "Show values of many nodes as a table",
     "A row for each node that PATTERN matches, a column for each PATH from there:\n"
     "  'appModel.FlowSheetObjects.Streams.*' Temperature \"Molar Flow\" \"Comp Mole Frac\"\n"
     "An array makes a column for each element, a path to several nodes one for each. A cell is\n"
     "empty for NULL and where there is no such node; a column that no node has is left out, with "
     "a message and\n"
     "exit status 1. With --json an object a line: path, name, cells; a cell has value and uom. A\n"
     "star behind a value, in JSON \"stale\": true, says that it is older than a change of a\n"
     "recorded case.",
     View::kEither, Place::kBoth, MakeTable},
    {"set", "Store a value",
     "The case is solved again and saved, and the value as it now stands is written. With --set\n"
     "more values are stored with it, and solved once: fractions of a composition stand as they\n"
     "are given when they sum to 1, or else are normalised, with a message. A composition, as any\n"
     "array, takes the values of all its elements, with commas: 0.8,0.05,0.15. An empty VALUE\n"
     "takes the value away. VALUE is in the unit behind it (30C), in --unit, or else in the unit\n"
     "that get shows. Exit status 1 when a store is refused, and nothing is saved; also when the "
     "case\n"
     "does not solve, as when a value is still missing: standard error then tells why, and in\n"
     "JSON \"complete\" is false. A recorded case keeps its results, marked as stale.",
     View::kEither, Place::kBoth, MakeSet},
    {"solve", "Solve the case",
     "Says whether the solve is complete; exit status 1 when it is not, and then the objects that\n"
     "stand against it are named on standard error. The values given with --set are stored first;\n"
     "when one is refused nothing is saved, and the exit status is 1. With --json an object:\n"
     "complete, message; when it fails also problem, failed, error and exit.",
     View::kRaw, Place::kBoth, MakeSolve},
    {"hold", "Keep the solver and the normalising of fractions back until release", "", View::kRaw,
     Place::kShell, MakeHold},
    {"release", "Solve what was stored since hold", "As solve, which ends a hold too.", View::kRaw,
     Place::kShell, MakeSolve},
    {"watch", "Solve the case and write how values change",
     "A line each change: path, old value, new value, unit, with tabs between them. The values\n"
     "given with --set are stored first. Ends with the solve. When one of the paths leads nowhere\n"
     "nothing is stored or solved.",
     View::kEither, Place::kBoth, MakeWatch},
    {"collect", "Choose nodes, keep them in a file, and read or store all of them at once",
     "FILE keeps the chosen nodes, in their order, each with the unit in which it is shown. It "
     "can\n"
     "be used on other cases: a node that is not there is named, with those that it may have\n"
     "become, and no other is shown in its place.",
     View::kNone, Place::kBoth, nullptr},
    {"collect add", "Add nodes to a selection, or begin one",
     "Writes the path of each node that was added. One that is chosen already stays where it is,\n"
     "and takes the --unit. Exit status 1 when a pattern matches nothing, or a node can't be\n"
     "chosen; the others are added. With --json an object a line: path, uom.",
     View::kEither, Place::kBoth, MakeCollectAdd},
    {"collect list", "List the paths of a selection, and the units that were chosen",
     "A line each: path, tab, unit; without a unit nothing follows the path.", View::kNone,
     Place::kBoth, MakeCollectList},
    {"collect read", "Read all values of a selection",
     "A line each node: path, value, unit, status, and age: specified, calculated, stale where it "
     "is\n"
     "older than a change of the case, or unknown. Exit status 1 when the case does not have all\n"
     "nodes.",
     View::kOfSelection, Place::kBoth, MakeCollectRead},
    {"collect write", "Store values into the nodes of a selection, in their order",
     "As many values as there are nodes; an empty one leaves its node as it is. The value - reads\n"
     "values from standard input, one a line. They are in the units behind them (30C), in --unit,\n"
     "or else in the units of the selection. The case is solved once, and all values are written\n"
     "as they then stand, as read does. Exit status 1 when a store is refused, the others stand;\n"
     "also when the case does not solve.",
     View::kOfSelection, Place::kBoth, MakeCollectWrite},
    {"collect watch", "Solve the case and write how values of a selection change",
     "A line each change: path, old value, new value, unit, with tabs between them. The values\n"
     "given with --set are stored first. Ends with the solve.",
     View::kOfSelection, Place::kBoth, MakeCollectWatch},
    {"collect remove", "Take nodes out of a selection",
     "Exit status 1 when a path is not one of its own; the others are removed. With --json an\n"
     "object each: removed.",
     View::kNone, Place::kBoth, MakeCollectRemove},
    {"collect diff", "Compare the values of a selection in two cases",
     "A line each node that differs by more than the tolerance: path, both values, unit and\n"
     "difference. Exit status 1 when there is one, or a node is missing on a side.",
     View::kNone, Place::kProgram, MakeCollectDiff},
    {"publish", "List the nodes of a selection in its case as published variables",
     "Writes the selection beside the case, as its name with .atpub, and then the name of that\n"
     "file. From then on the case shows its nodes below \"QSI Published Variables\", beside\n"
     "appModel. Exit status 3 when it can't be written, or the case does not have all nodes. With\n"
     "--json an object: file.",
     View::kRaw, Place::kBoth, MakePublish},
    {"explain", "Tell where a node of the neutral view comes from",
     "Shows the nodes of the case on which it stands, the values on both sides, and the\n"
     "translators of the map with the reason why one was used or left. In the shell of the raw "
     "view\n"
     "the path leads down from the top of the neutral one.",
     View::kNeutral, Place::kBoth, MakeExplain},
    {"report", "Show streams, unit operations, columns and reactions as tables",
     "Of the neutral view: streams with their mole fractions, energy streams, unit operations, "
     "the\n"
     "stages of each column, reactions; objects of a sub-flowsheet stand behind its name. A "
     "column\n"
     "that no object has is left out, and so is a table without rows. With --csv a file for each\n"
     "table is written and named; with --json an object a row: table, path, name, cells. With\n"
     "--html the Python package writes one page, with the flowsheet as a picture.",
     View::kNeutralTables, Place::kProgram, MakeReport},
    {"streams", "Show the material streams as a table",
     "A row each stream of the neutral view with its state, its flows and the unit operations at\n"
     "its ends; those of a sub-flowsheet stand behind its name. A column that no stream has is\n"
     "left out. With --json an object a row: path, name, cells.",
     View::kNeutralTables, Place::kProgram, MakeStreams},
    {"units", "Show each unit operation with its streams, its duty and its balances",
     "The energy streams of a unit operation have + before them where they bring energy and -\n"
     "where they take it. A balance error is what goes in less what comes out, over the larger of\n"
     "both; it is empty where a flow is not known.",
     View::kNeutralTables, Place::kProgram, MakeUnits},
    {"diff", "Compare all values of two cases",
     "A line each value that differs by more than the tolerance: path, both values, unit and\n"
     "difference, in the units of A or of --units. A node that one case does not have is empty on\n"
     "its side. Exit status 1 when anything differs. collect diff compares chosen nodes.",
     View::kNone, Place::kProgram, MakeDiff},
    {"classes", "Show the classes of the neutral library",
     "Without NAME the names, one a line. With it superclasses and attributes, those of its\n"
     "superclasses first, or the options of an enumeration; fields have tabs between them.",
     View::kNone, Place::kBoth, MakeClasses},
    {"check-map", "Check a class library and a map for those who write them",
     "Without options those of the program. A line each finding: \"file:line: text\". Exit status "
     "1\n"
     "when there is a mistake. With --case the neutral view of a case is walked, and of each "
     "mapped\n"
     "attribute that has a value nowhere the reasons follow, with the number of places. With "
     "--json\n"
     "an object each finding: kind, file, line, text; or kind, class, attribute, declared_by,\n"
     "instances, count, text, example.",
     View::kNone, Place::kProgram, MakeCheckMap},
    {"path", "Show the steps of a path expression",
     "Every name stands in quotes. Exit status 1 and the parse error when it does not parse. With\n"
     "--json an object: path, steps.",
     View::kNone, Place::kBoth, MakePath},
    {"shell", "Work in a case at a prompt",
     "The words of the program without CASE, and cd, pwd, hold, release, undo, save, help, quit\n"
     "and exit. At a terminal quit asks when something is not saved.\n"
     "Paths begin at the present node, or else at the top. Single quotes hold an argument with\n"
     "blanks together; double quotes do so too and stay part of it, as paths want them. ^C ends a\n"
     "solve or whatever else is at work, and drops a line that is typed.",
     View::kEither, Place::kProgram, MakeShell},
    {"demo", "A guided tour through the case that the program carries",
     "Exit status 1 when a step does not do what it says.", View::kNone, Place::kProgram, MakeDemo},
    {"complete", "List what may stand at the end of a shell line",
     "For completion in editors and shells: candidates for the last word of LINE, one a line.",
     View::kEither, Place::kProgram, MakeComplete},
    {"cd", "Go to a node; .. is the parent, nothing the top node", "", View::kEither, Place::kShell,
     MakeCd},
    {"pwd", "Show the path of the present node", "", View::kEither, Place::kShell, MakePwd},
    {"save", "Write the case to a file", "", View::kRaw, Place::kShell, MakeSave},
    {"undo", "Take back what the last line stored",
     "Writes what then stands at its paths, after a solve unless stores are held. Once more it "
     "goes\n"
     "on to the line before. What was solved without a store can't be taken back.",
     View::kRaw, Place::kShell, MakeUndo},
    {"help", "List the words, or explain one", "", View::kRaw, Place::kShell, MakeHelp},
    {"quit", "Leave the shell", "", View::kRaw, Place::kShell, MakeQuit},
    {"exit", "Leave the shell, as quit", "", View::kRaw, Place::kShell, MakeQuit},
};

}  // namespace

std::span<const WordRow> Words() {
    return kWords;
}

}  // namespace fixtop
