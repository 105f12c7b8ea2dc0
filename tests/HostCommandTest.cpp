// The program's command line: what it takes, writes and ends with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "HostProgram.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// A document that there is nothing to report on, nor to lose.
constexpr const char* kNothing =
    "<QIFDocument xmlns=\"http://qifstandards.org/xsd/qif3\" versionQIF=\"3.0.0\"/>";

class HostCommand : public HostProgram {
 protected:
  HostCommand()
      : nothing_(File("nothing.qif", kNothing)),
        bad_(File("bad.qif", "no model")),
        lost_(Edited("<TargetValue decimalPlaces=\"1\">35<", "<TargetValue>NaN<")) {}

  // What stands in the folder besides what every test has.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_))
      names.push_back(entry.path().filename());
    return names;
  }

  std::string nothing_, bad_, lost_;
};

TEST_F(HostCommand, ArgumentsHaveTheirExitCodesAndMessages) {
  const struct {
    std::string arguments;
    int code;
    const char *out, *err;  // what they contain
  } cases[] = {
      {nothing_, 0,
       "nothing.qif: QIF 3.0, no unit of length, angles written in radian; no PMI; nothing lost\n",
       ""},
      {"--strict " + nothing_, 0, "nothing lost", ""},
      {"--summary " + lost_, 4, "; 6 datums, 4 datum targets, 11 tolerances, 1", "PMI was lost ("},
      {"--summary " + nothing_ + " " + bad_, 2, "\n", "bad.qif"},
      {"--strict --kind text " BUNDLED_MODEL, 4, "\nNotes\n", ", the first"},
      {"--kind datum,text --kind flagNote " BUNDLED_MODEL, -1, "\nFlag notes\n", ""},
      {"--kind 'datum, flagNote' " BUNDLED_MODEL, -1, "\nFlag notes\n", ""},
      {"--kind unknown --by face " BUNDLED_MODEL, -1, "\nNo annotation of kind unknown\n\n", ""},
      {"--by capture --kind datum " BUNDLED_MODEL, -1, "\nCapture \"Section A-A\"  id 552\n  datum",
       ""},
      {"--capture 'Section A-A' --by view " BUNDLED_MODEL, -1, "\n  dimension \"Overall length\"",
       ""},
      {"--by face --capture 552 " BUNDLED_MODEL, -1, "\nface \"wall outer\" id ", ""},
      {"--verbose " BUNDLED_MODEL, -1, "\n      leader (", ""},
      {"--help", 0, "4 reported, but PMI was lost", ""},
      {"--version", 0, "pmi_report ", ""},
      {"--capture nope " BUNDLED_MODEL, 2, "",
       ": no capture \"nope\"; the model has \"All annotations\" (id 551), \"Section A-A\" (id "
       "552)\n"},
      {"--capture nope " + nothing_, 2, "", ": no capture \"nope\"; the model has none\n"},
      {"--kind ,", 105, "", "--kind: an item of the list is empty"},
      {"--kind datum,datums", 105, "", "datums not in {datum,datumTarget,geometricTolerance,"},
      {"--by size", 105, "", "size not in {kind,view,face,capture}"},
      {"''", 105, "", "the name of a file is empty"},
      {"--output '' " + nothing_, 105, "", "the name of a file is empty"},
      {"- -", 105, "", "standard input, -, can be named once"},
      {nothing_ + " --output " + nothing_, 105, "", "nothing.qif is one of the models"},
      {"--json --by view", 108, "", "--json excludes --by"},
      {"--json --summary", 108, "", "--json excludes --summary"},
      {"--by view --summary", 108, "", "--summary excludes --by"},
      {"--jsn", 109, "", "--jsn"},
      {"--output", 114, "", "--output"},
      {"--output /nowhere/at/all " + nothing_, 1, "",
       "pmi_report: cannot write /nowhere/at/all: No such file or directory\n"},
      {"--output $F/no/../x " + nothing_, 1, "", "No such file or directory\n"},
      {"--output /tmp " + nothing_, 1, "", "cannot write /tmp: Is a directory\n"},
  };
  for (const auto& [arguments, code, out, err] : cases) {
    const Outcome run = Run(arguments);
    // The code alone is open where others than this test settle what is lost.
    EXPECT_TRUE(run.code == code || (code < 0 && run.Reported())) << arguments << run.err;
    EXPECT_THAT(run.out, HasSubstr(out)) << arguments;
    EXPECT_THAT(run.err, HasSubstr(err)) << arguments;
    EXPECT_EQ(run.err.empty() && code >= 0, code == 0) << arguments;
    EXPECT_EQ(run.out.empty(), *out == '\0') << arguments;
  }
}

TEST_F(HostCommand, BundledModelShowsEveryKind) {
  const Json report = Json::parse(Run("--json").out);
  EXPECT_EQ(report.at("totals"),
            Json::parse(R"({"text": 5, "roughness": 2, "geometricTolerance": 11, "dimension": 14,
                            "datum": 6, "datumTarget": 4, "flagNote": 1, "unknown": 0,
                            "captures": 2})"));
  EXPECT_EQ(report.at("captures")[1].at("clippingPlane").at("normal"), Json({0.0, 1.0, 0.0}));
}

TEST_F(HostCommand, OfSeveralModelsTheWorstExitCodeCounts) {
  const std::string plugin = "--plugin " RAISING_PLUGIN " ";
  const struct {
    std::string command;
    int code;
  } cases[] = {{"$P $F/nothing.qif $F/edited.qif", 4},
               {"$P $F/edited.qif $F/nothing.qif", 4},
               {"$P $F/bad.qif $F/edited.qif", 2},
               {"$P " + plugin + "$F/nothing.qif $F/bad.qif", 3},
               {"$P " + plugin + "$F/bad.qif $F/nothing.qif", 3},
               {"$P $F/bad.qif $F/nothing.qif > /dev/full", 1}};
  for (const auto& [command, code] : cases) EXPECT_EQ(Shell(command).code, code) << command;
}

TEST_F(HostCommand, OneLineSaysWhatAModelLost) {
  const Outcome run = Run("--json " + lost_);
  EXPECT_EQ(run.code, 4);
  EXPECT_THAT(run.err, AllOf(StartsWith("pmi_report: " + lost_ + ": "), HasSubstr("PMI was lost ("),
                             EndsWith("\n")));
  EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  EXPECT_FALSE(Json::parse(run.out).at("views").empty());
  EXPECT_THAT(run.out, StartsWith("{\n")) << "a document alone has a line for every value";
}

TEST_F(HostCommand, BadModelGivesOneLineWithFileAndPlaceAndNothingOnStdout) {
  const struct {
    std::string path;
    const char* says;
  } cases[] = {
      {"/nowhere/at/all.qif", "/nowhere/at/all.qif"},
      {folder_, folder_.c_str()},
      {File("empty.qif", ""), "empty.qif"},
      {File("broken.qif", "<QIFDocument>\n  <Header>\n</QIFDocument>"), "broken.qif:3:"},
      {File("other.qif", "<?xml version=\"1.0\"?>\n<drawing/>"), "other.qif:2:"},
      {Edited("versionQIF=\"3.0.0\"", "versionQIF=\"2.1.0\""), "edited.qif:"},
  };
  for (const auto& bad : cases) {
    const Outcome run = Run("--json " + bad.path);
    EXPECT_EQ(run.code, 2) << bad.path;
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_THAT(run.err, AllOf(HasSubstr(bad.says), EndsWith("\n")));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
}

TEST_F(HostCommand, BadPluginGivesItsOwnExitCodeWithTheReason) {
  const struct {
    const char* plugin;
    const char* says;
  } cases[] = {{"/nowhere/plugin.so", "/nowhere/plugin.so"},
               {NO_PLUGIN, "KOVACreateOrvoPMIExporter"},
               {FAILING_PLUGIN, "0x1000001"},
               {RAISING_PLUGIN, "raised on purpose"}};
  for (const auto& bad : cases) {
    const Outcome run = Run(std::string("--plugin ") + bad.plugin);
    EXPECT_EQ(run.code, 3) << bad.plugin;
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_THAT(run.err, HasSubstr(bad.says));
  }
}

TEST_F(HostCommand, SeveralModelsGiveALineEachAndARefusedOneItsReason) {
  const Outcome run = Run("--json " BUNDLED_MODEL " " + bad_ + " --kind datum - <" + nothing_);
  EXPECT_EQ(run.code, 2);
  EXPECT_THAT(run.err, HasSubstr("bad.qif"));
  std::istringstream lines(run.out);
  std::vector<Json> reports;
  for (std::string line; std::getline(lines, line);) reports.push_back(Json::parse(line));
  ASSERT_EQ(reports.size(), 3U);
  EXPECT_EQ(reports[0].at("totals").at("dimension"), 14);
  EXPECT_EQ(reports[0].at("views").size(), 6U);  // of the datums alone
  EXPECT_EQ(reports[1].at("source").at("file"), bad_);
  EXPECT_THAT(run.err, HasSubstr(reports[1].at("source").at("error").get<std::string>()));
  EXPECT_EQ(reports[2].at("source").at("file"), "standard input");
  const std::string text = Run(nothing_).out;
  EXPECT_EQ(Run(nothing_ + " " + nothing_).out, text + "\n" + text);
  const Outcome table = Run("--summary " + nothing_ + " " + bad_);
  EXPECT_EQ(std::count(table.out.begin(), table.out.end(), '\n'), 3);
  EXPECT_THAT(table.out, HasSubstr("/bad.qif      refused"));
}

TEST_F(HostCommand, OutputIsAFileThatIsReplacedWholeOrNotAtAll) {
  const std::string wanted = Run(nothing_).out;
  const std::string there = File("there", "before");
  chmod(there.c_str(), 0640);
  fs::create_symlink("there", folder_ / "link");
  EXPECT_EQ(Run("--output " + (folder_ / "link").string() + " " + nothing_).code, 0);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(Read(there), wanted);
  struct stat state {};
  EXPECT_EQ(stat(there.c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 0777, 0640U);
  EXPECT_EQ(Shell("umask 027; $P --output $F/new $F/nothing.qif").code, 0);
  EXPECT_EQ(stat((folder_ / "new").c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 0777, 0640U);

  const std::size_t files = Files().size();
  EXPECT_EQ(Run("--output " + there + " " + bad_).code, 2);
  const Outcome full = Shell("ulimit -f 1; $P --json --output $F/there " BUNDLED_MODEL);
  EXPECT_EQ(full.code, 1);
  EXPECT_EQ(full.err, "pmi_report: cannot write " + there + ": File too large\n");
  // It ends while it waits for the model.
  EXPECT_NE(Shell("mkfifo $F/pipe; timeout 1 $P --output $F/there - <>$F/pipe").code, 0);
  EXPECT_EQ(Read(there), wanted);
  EXPECT_EQ(Files().size(), files + 1) << "something was left";

  for (const char* straight :
       {"$P --output - $F/nothing.qif", "$P --output /dev/stderr $F/nothing.qif 2>&1 | cat"}) {
    EXPECT_EQ(Shell(straight).out, wanted) << straight;
  }
  EXPECT_EQ(Shell("echo x; $P --output /dev/stdout $F/nothing.qif").out, "x\n" + wanted);
  // Nobody hears what was lost; it is not written into the file either.
  EXPECT_EQ(Shell("ln -s later $F/ahead; $P --output $F/ahead $F/edited.qif 2>&-").code, 4);
  EXPECT_TRUE(fs::is_symlink(folder_ / "ahead"));
  EXPECT_THAT(Read(folder_ / "later"), AllOf(StartsWith(lost_), Not(HasSubstr("pmi_report:"))));
  // Nor is it read in place of standard input.
  EXPECT_THAT(Shell("$P --output $F/later - <&-").err, EndsWith("Bad file descriptor\n"));
  EXPECT_EQ(Run("--output " + there + " <" + nothing_ + " -").code, 0);
  EXPECT_THAT(Read(there), StartsWith("standard input: QIF 3.0"));
}

TEST_F(HostCommand, OutputThatNobodyTakesIsAnErrorOfWriting) {
  for (const char* command :
       {"{ sleep 0.5; $P $F/nothing.qif; echo code $? >&2; } | true",
        "$P $F/nothing.qif >&-; echo code $? >&2", "$P $F/nothing.qif >/dev/full; echo code $? >&2",
        "$P --output /dev/full $F/nothing.qif; echo code $? >&2"}) {
    EXPECT_THAT(Shell(command).err,
                AllOf(StartsWith("pmi_report: cannot write "), EndsWith("\ncode 1\n")))
        << command;
  }
}

TEST_F(HostCommand, ATerminalGetsColoursUnlessItIsAskedForNone) {
  const auto terminal = [&](const std::string& environment,
                            const std::string& arguments = "$F/nothing.qif") {
    return Shell("env " + environment + " script -qec \"$P " + arguments +
                 "\" /dev/null </dev/null")
        .out;
  };
  EXPECT_THAT(terminal("-u NO_COLOR TERM=xterm"), HasSubstr("\x1b[1m"));
  EXPECT_THAT(terminal("NO_COLOR= TERM=xterm"), HasSubstr("\x1b[1m"));
  for (const char* none :
       {"NO_COLOR=1 TERM=xterm", "-u NO_COLOR TERM=dumb", "-u NO_COLOR -u TERM"}) {
    EXPECT_THAT(terminal(none), AllOf(HasSubstr("nothing lost"), Not(HasSubstr("\x1b")))) << none;
  }
  EXPECT_THAT(terminal("TERM=xterm", "$F/nothing.qif $F/bad.qif"), HasSubstr("[2/2] "));
  Edited("ANODISE", "\u009b31m");
  EXPECT_THAT(terminal("TERM=xterm", "--json $F/edited.qif"),
              AllOf(HasSubstr("\\u009b31m"), Not(HasSubstr("\u009b"))));
  EXPECT_THAT(Shell("TERM=xterm $P $F/nothing.qif").out, Not(HasSubstr("\x1b")));
}

// README's line for thousands of models.
TEST_F(HostCommand, ManyModelsAreSpreadOverJobsAndNoneIsLostOrDoneTwice) {
  if (std::system("parallel --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "parallel is missing";
  fs::create_directories(folder_ / "models/a b");
  const std::string names[] = {"models/1.qif", "models/2.qif", "models/a b/1.qif",
                               "models/it's.qif"};
  for (const std::string& name : names) File(name, kNothing);
  File("models/bad.qif", "no model");
  const std::string line =
      "cd $F && PATH=$(dirname $P):$PATH && find models -name '*.qif' -print0 | sort -z | "
      "parallel -0 -j2 --joblog jobs.log --resume pmi_report --json --output {}.json {}";
  // The sequence numbers and exit codes of the jobs.
  const std::string jobs = " && sed 1d $F/jobs.log | sort -n | cut -f1,7";
  const Outcome first = Shell(line);
  EXPECT_EQ(first.code, 1) << "jobs failed";
  EXPECT_THAT(first.err, HasSubstr("models/bad.qif"));
  EXPECT_EQ(Shell("true" + jobs).out, "1\t0\n2\t0\n3\t0\n4\t2\n5\t0\n");
  for (const std::string& name : names) {
    EXPECT_EQ(Json::parse(Read(folder_ / (name + ".json"))).at("source").at("file"), name);
  }
  // Two jobs did not come to their end; they alone are done again.
  Shell("cd $F && sed -i '/1\\.qif/d' jobs.log && rm models/1.qif.json models/a*/*.json");
  File("models/2.qif.json", "kept");
  EXPECT_EQ(Shell(line + jobs).out, "1\t0\n2\t0\n3\t0\n4\t2\n5\t0\n");
  EXPECT_EQ(Read(folder_ / "models/2.qif.json"), "kept");
  for (int i : {0, 2}) EXPECT_TRUE(fs::exists(folder_ / (names[i] + ".json")));
}

}  // namespace
