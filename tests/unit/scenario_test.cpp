#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "device/trace_file.h"
#include "simulator/adapter.h"
#include "simulator/scenario_memory.h"
#include "simulator/scenario_parser.h"
#include "simulator/trace.h"

namespace {

// A scenario text, its records and the adapter that answers from them.
struct Loaded {
  std::vector<uint32_t> block;
  Scenario scenario;
  Adapter adapter;
};

void Load(Loaded* loaded, const std::string& text) {
  ScenarioSizes sizes = {};
  const ScenarioError error = ParseScenario(text.data(), text.size(), nullptr, &sizes, nullptr);
  ASSERT_EQ(error.what, nullptr) << error.line << ": " << error.what;
  loaded->block.resize(ScenarioMemoryBytes(&sizes) / 4 + 1);
  ScenarioMemory memory = {};
  uint32_t* served = DivideScenarioMemory(loaded->block.data(), &sizes, &memory);
  ParseScenario(text.data(), text.size(), &memory, &sizes, &loaded->scenario);
  AdapterStart(&loaded->adapter, &loaded->scenario, served);
}

// Sends a request with the payload; returns "ok" or the error code, then the payload left, then
// the returned count if it is not the payload's length.
std::string Ask(Loaded* loaded, uint32_t oid, std::string payload) {
  auto* bytes = reinterpret_cast<uint8_t*>(payload.data());
  const auto length = static_cast<uint32_t>(payload.size());
  const RequestResult result = AdapterRequest(&loaded->adapter, oid, bytes, length);
  std::string answer =
      result.call.outcome == Outcome::Fails ? std::to_string(result.call.error) : "ok";
  answer += "|" + payload;
  if (result.returned != length) answer += "|" + std::to_string(result.returned);
  return answer;
}

ScenarioError ErrorOf(const std::string& text) {
  ScenarioSizes sizes = {};
  return ParseScenario(text.data(), text.size(), nullptr, &sizes, nullptr);
}

TEST(ScenarioParser, RefusesWithLineAndReason) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"outcome expected", {"open", "5", "5 # ok"}},
      {"unknown outcome", {"open fine"}},
      {"null belongs to open", {"close null", "5 null", "5 ok null"}},
      {"unexpected word", {"open ok ok", "register 1 2 3"}},
      {"number expected",
       {"open error=", "open error=-1", "0x ok", "5x ok", "5 ok 0:01*", "5 ok 0:u32="}},
      {"value expected", {"register 1"}},
      {"number is too large",
       {"register 0x100000000 1", "register 1 0x100000000", "5 ok 0:u8=256", "5 ok 0:u8=-129",
        "5 ok 0:u64=18446744073709551616", "4294967296 ok", "5 ok 4294967296:00"}},
      {"unknown word", {"5 OK", "5 12 ok", "5 ok iff", "5 ok lent=1"}},
      {"len belongs before the outcome", {"5 ok len=1"}},
      {"if belongs before the outcome", {"5 ok if 0:01"}},
      {"the outcome is given twice", {"5 ok ok", "5 error=1 error=2"}},
      {"times belongs after the outcome", {"5 times=1 ok"}},
      {"returned belongs after the outcome", {"5 returned=x ok"}},
      {"bytes to write belong after the outcome", {"5 0x0:01 ok"}},
      {"the OID comes first", {"ok 5", "if 0:01 5 ok"}},
      {"given twice",
       {"5 len=1 len=1 ok", "5 ok times=1 times=1", "5 ok returned=1 0:01 returned=1"}},
      {"OFFSET:BYTES expected", {"5 if", "5 if 0=1 ok"}},
      {"bytes expected", {"5 ok 0:", "5 ok 0:01gg", "5 ok 0:\"a\"b"}},
      {"hex digits come in pairs", {"5 ok 0:012"}},
      {"only one byte can be repeated", {"5 ok 0:0102*3"}},
      {"text is not ended", {"5 ok 0:\"a", "5 ok 0:\"a\\"}},
      {"unknown escape", {"5 ok 0:\"a\\q\"", "5 ok 0:\"\\x4\"", "5 ok 0:\"\\xg4\""}},
      {"unknown statement", {"clos ok"}}};
  for (const auto& [what, statements] : cases) {
    for (const char* statement : statements) {
      const ScenarioError error = ErrorOf(std::string("open ok\r\n\n") + statement);
      EXPECT_STREQ(error.what, what) << statement;
      EXPECT_EQ(error.line, 3U) << statement;
    }
  }
}

TEST(ScenarioParser, TakesAByteOrderMark) {
  EXPECT_EQ(ErrorOf("\xEF\xBB\xBF 5 ok").what, nullptr);
  EXPECT_STREQ(ErrorOf("\xFF\xFE 5 ok").what, "text is UTF-16; save it as UTF-8");
  EXPECT_STREQ(ErrorOf("\xFE\xFF 5 ok").what, "text is UTF-16; save it as UTF-8");
}

TEST(ScenarioParser, KeepsToItsLimits) {
  std::string patches = "1 ok";
  for (int i = 0; i < 32; i++) patches += " 0:00";
  const struct {
    const char* what;
    std::string piece;
    uint32_t most;
  } limits[] = {{"line is longer than 1 MiB", " ", MaxLineBytes},
                {"too many registers", "register 1 2\n", 65536},
                {"too many rules", "1 ok\n", 65536},
                {"too many patches", patches + "\n", 32768},
                {"scenario is larger than 16 MiB", "#\n", 8 * 1024 * 1024}};
  for (const auto& limit : limits) {
    std::string text;
    for (uint32_t i = 0; i < limit.most; i++) text += limit.piece;
    EXPECT_EQ(ErrorOf(text).what, nullptr);
    EXPECT_STREQ(ErrorOf(text + limit.piece).what, limit.what);
  }
}

TEST(ScenarioParser, TakesEveryPatchForm) {
  const std::pair<const char*, std::string> cases[] = {
      {"0:6a4A", "jJ--------"},
      {"2:41*3 times=1 returned=10", "--AAA-----"},
      {"8:42*4294967295", "--------BB"},
      {"9:4142 10:41 4294967295:41", "---------A"},
      {"0:u8=0x41 1:u8=-1 2:u16=0x4241 4:u32=0x44434241",
       "A\xff"
       "ABABCD--"},
      {"0:u64=-0x8000000000000000", std::string("\0\0\0\0\0\0\0\x80--", 10)},
      {"0:\"a#b \\n\\r\\t\\\\\\\"\\x00\"#", std::string("a#b \n\r\t\\\"\0", 10)},
      {"0:L\"a\\xe9\"\t5:\"\"", std::string("a\0\xe9\0------", 10)},
      {"0:4141 1:42", "AB--------"}};
  for (const auto& [patches, left] : cases) {
    Loaded loaded;
    Load(&loaded, std::string("5 ok ") + patches);
    EXPECT_EQ(Ask(&loaded, 5, "----------"), "ok|" + left) << patches;
  }
}

TEST(SimulatedAdapter, FirstMatchingRuleAnswersUntilItIsUsedUp) {
  Loaded loaded;
  Load(&loaded,
       "open null\nopen error=2\r\nclose error=6\n"
       "5 len=2 if 1:\"b\" error=31 0:58 times=2\n"
       "5 if 0:61 if 1:62*2 ok 0:59 returned=7\n"
       "5 if 3:\"\" error=8 times=0\n"
       "5 len=0 error=0");
  EXPECT_EQ(AdapterOpen(&loaded.adapter).error, 2U);
  EXPECT_EQ(AdapterClose(&loaded.adapter).error, 6U);
  EXPECT_EQ(Ask(&loaded, 5, "ab"), "31|Xb");
  EXPECT_EQ(Ask(&loaded, 5, "abb"), "ok|Ybb|7");
  EXPECT_EQ(Ask(&loaded, 5, "cb"), "31|Xb");
  EXPECT_EQ(Ask(&loaded, 5, "ab"), "50|ab");  // used up; the second rule needs three bytes
  EXPECT_EQ(Ask(&loaded, 5, "abc"), "50|abc");
  EXPECT_EQ(Ask(&loaded, 5, ""), "0|");
  EXPECT_EQ(Ask(&loaded, 6, "ab"), "50|ab");
}

TEST(SimulatedAdapter, KeepsWhatIsWrittenToRegisters) {
  const uint32_t read = 0xFFFCF001;
  const uint32_t write = 0xFFFCF002;
  const auto access = [](uint32_t address, uint32_t value) {
    const uint32_t words[] = {address, value};
    return std::string(reinterpret_cast<const char*>(words), sizeof(words));
  };
  Loaded loaded;
  Load(&loaded, "register 4 1\nregister 8 2\nregister 4 3\n0xFFFCF001 if 0:u32=12 error=31");
  EXPECT_EQ(Ask(&loaded, read, access(4, 9)), "ok|" + access(4, 3));
  EXPECT_EQ(Ask(&loaded, read, access(16, 9)), "ok|" + access(16, 0));
  EXPECT_EQ(Ask(&loaded, read, access(12, 9)), "31|" + access(12, 9));
  EXPECT_EQ(Ask(&loaded, read, "1234567"), "50|1234567");
  for (uint32_t i = 0; i < MaxWrittenRegisters; i++) Ask(&loaded, write, access(4 * i, i + 100));
  EXPECT_EQ(Ask(&loaded, write, access(4, 7)), "ok|" + access(4, 7));
  EXPECT_EQ(Ask(&loaded, read, access(4, 0)), "ok|" + access(4, 7));
  EXPECT_EQ(Ask(&loaded, write, access(3, 7)), "8|" + access(3, 7));
  Loaded none;
  Load(&none, "");
  EXPECT_EQ(Ask(&none, read, access(4, 9)), "50|" + access(4, 9));
  EXPECT_EQ(AdapterOpen(&none.adapter).outcome, Outcome::Succeeds);
}

// The bytes of a trace, and where its last line starts.
struct TraceText {
  std::string text;
  size_t lineStart;
};

TraceSink SinkOf(TraceText* text) {
  const auto append = [](void* context, const char* bytes, uint32_t size) {
    EXPECT_LE(size, TraceChunkBytes);
    static_cast<TraceText*>(context)->text.append(bytes, size);
    return true;
  };
  const auto endLine = [](void* context, LineEnd end) {
    auto* trace = static_cast<TraceText*>(context);
    if (end != LineEnd::Kept) trace->text.resize(trace->lineStart);
    trace->lineStart = trace->text.size();
  };
  return {append, endLine, text};
}

std::string ReadFile(const std::string& name) {
  std::ifstream stream(name);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Sends a request as the hosts do.
void Call(Loaded* loaded, Trace* trace, std::string payload) {
  auto* bytes = reinterpret_cast<uint8_t*>(payload.data());
  const auto length = static_cast<uint32_t>(payload.size());
  TraceSent(trace, 0xFEDCBA05, bytes, length);
  TracedRequest(&loaded->adapter, trace, 0xFEDCBA05, bytes, length);
}

// The trace of requests with these payloads, from opening to closing.
std::string Record(const std::string& scenario, const std::vector<std::string>& payloads) {
  Loaded loaded;
  Load(&loaded, scenario);
  TraceText text = {};
  Trace trace;
  TraceStart(&trace, SinkOf(&text));
  TraceOpen(&trace, AdapterOpen(&loaded.adapter));
  for (const std::string& payload : payloads) Call(&loaded, &trace, payload);
  TraceClose(&trace, AdapterClose(&loaded.adapter));
  EXPECT_EQ(trace.bytes, text.text.size());
  return text.text;
}

TEST(Trace, ReplaysAsAScenario) {
  const std::vector<std::string> payloads = {std::string(2, 0), "\xFE\xDC\xBA\x98\x76\x54\x32\x10",
                                             "", std::string(9000, 1)};
  const std::string trace = Record(
      "0xFEDCBA05 if 0:00 ok 1:fA returned=3\n0xFEDCBA05 error=234 8999:ff\n"
      "open error=13\nclose error=6",
      payloads);
  EXPECT_EQ(trace.substr(0, trace.find("0xFEDCBA05 len=9000")),
            "open error=13\n"
            "0xFEDCBA05 len=2 if 0:0000 ok 0:00fa times=1 returned=3\n"
            "0xFEDCBA05 len=8 if 0:fedcba9876543210 error=234 0:fedcba9876543210 times=1\n"
            "0xFEDCBA05 len=0 error=234 times=1\n");
  EXPECT_TRUE(trace.ends_with("0101ff times=1\nclose error=6\n"));
  EXPECT_EQ(Record(trace, payloads), trace);
  EXPECT_EQ(Record("open null", {}), "open null\nclose ok\n");
}

TEST(Trace, NamesTheRuleThatCameNearest) {
  const std::pair<const char*, const char*> cases[] = {
      {"register 1 2\n5 ok", "no rule has its OID"},
      {"0xFEDCBA05 len=8 ok\n0xFEDCBA05 len=184 ok", "nearest is line 1, which asks for len=8"},
      {"5 ok\n0xFEDCBA05 if 4:00 ok\n0xFEDCBA05 len=8 ok",
       "nearest is line 2, which asks for a byte at offset 4, past the end"},
      {"0xFEDCBA05 if 5:\"\" ok",
       "nearest is line 1, which asks for a byte at offset 5, past the end"},
      {"0xFEDCBA05 if 0:61 if 1:78*3 ok\n0xFEDCBA05 if 0:61 if 1:\"bX\" ok",
       "nearest is line 2, which asks for 58 at offset 2"},
      {"# twice\n0xFEDCBA05 ok times=0\n0xFEDCBA05 if 0:\"abc\" ok times=0\n0xFEDCBA05 if 0:00 ok",
       "nearest is line 3, which is used up"}};
  for (const auto& [scenario, nearest] : cases) {
    EXPECT_EQ(Record(scenario, {"abcd"}),
              "open ok\n0xFEDCBA05 len=4 if 0:61626364 error=50 0:61626364 times=1\n"
              "# no rule and no register served this request; " +
                  std::string(nearest) + "\nclose ok\n");
  }
}

TEST(Trace, KeepsToWhatAScenarioMayHold) {
  const struct {
    std::vector<size_t> lengths;
    std::string lastLines;
  } cases[] = {
      {{262133}, "close ok\n"},
      {{262134, 1000000, 1}, "close ok\n# calls left out, for which there was no room: 2\n"},
      {std::vector<size_t>(65536), "close ok\n"},
      {std::vector<size_t>(65539),
       "ok times=1\n# calls left out, for which there was no room: 4\n"},
      {std::vector<size_t>(20, 262133), "\n# calls left out, for which there was no room: 6\n"}};
  const std::string name = testing::TempDir() + "trace_limits";
  static TraceFile file;
  Loaded answers;
  Load(&answers, "0xFEDCBA05 ok");
  for (const auto& [lengths, lastLines] : cases) {
    ASSERT_TRUE(CreateTraceFile(&file, name.c_str()));
    TraceOpen(&file.trace, {Outcome::Succeeds, 0});
    for (const size_t length : lengths) Call(&answers, &file.trace, std::string(length, 1));
    TraceClose(&file.trace, {Outcome::Succeeds, 0});
    close(static_cast<int>(file.file));
    const std::string text = ReadFile(name);
    EXPECT_TRUE(text.ends_with(lastLines)) << text.substr(text.size() - 80);
    Loaded replayed;
    Load(&replayed, text);
    EXPECT_EQ(replayed.scenario.ruleCount, file.trace.rules);
  }
  remove(name.c_str());
}

TEST(Trace, TellsTheRequestThatIsOnItsWay) {
  const std::string name = testing::TempDir() + "trace_sent";
  const std::string leftOut = "# calls left out, for which there was no room: 1\n";
  const std::string first = "0xFEDCBA05 len=1 if 0:01 ok 0:01 times=1\n";
  static TraceFile file;
  Loaded answers;
  Load(&answers, "0xFEDCBA05 ok");
  ASSERT_TRUE(CreateTraceFile(&file, name.c_str()));
  const auto send = [&](size_t length) {
    const std::string payload(length, 1);
    TraceSent(&file.trace, 0xFEDCBA05, reinterpret_cast<const uint8_t*>(payload.data()),
              static_cast<uint32_t>(length));
    const std::string sent = ReadFile(name);
    Call(&answers, &file.trace, payload);
    return std::pair(sent, ReadFile(name));
  };
  EXPECT_EQ(send(1), std::pair(std::string("# sent: 0xFEDCBA05 len=1 if 0:01\n"), first));
  EXPECT_EQ(send(524300), std::pair(first + "# sent: 0xFEDCBA05 len=524300\n", first + leftOut));
  EXPECT_EQ(send(1), std::pair(first + leftOut + "# sent: 0xFEDCBA05 len=1 if 0:01\n",
                               first + first + leftOut));
  close(static_cast<int>(file.file));
  remove(name.c_str());
}

}  // namespace
