#include "nerio3d/vl/vlInput.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/vl/vlDebugError.h"
#include "nerio3d/vl/vlReadError.h"
#include "nrCapture.h"
#include "nrHeld.h"

namespace {

const std::string HEADER = "#VRML V2.0 utf8\n";

// A vlInput over a temporary file holding text.
class vlInputTest : public testing::Test {
 protected:
  ~vlInputTest() override {
    if (file) fclose(file);
  }
  vlInput& open(const std::string& text) {
    if (file) fclose(file);
    file = tmpfile();
    fwrite(text.data(), 1, text.size(), file);
    rewind(file);
    in.setFilePointer(file);
    return in;
  }
  vlInput& openBody(const std::string& body) { return open(HEADER + body); }
  // What is left unread, character by character.
  std::string rest() {
    std::string s;
    char c;
    while (in.get(c)) s += c;
    return s;
  }
  static std::string error(const std::string& message, int line) {
    char location[32];
    snprintf(location, sizeof location, "\tOccurred at line %3d", line);
    return "vl read error: " + message + "\n" + location + "\n";
  }

  vlInput in;
  FILE* file = nullptr;
};

TEST_F(vlInputTest, HeaderIsAnyFirstLineStartingWithHashAndIsCheckedOnce) {
  EXPECT_FLOAT_EQ(openBody("").getVersion(), 1.0f);
  EXPECT_EQ(rest(), "");
  EXPECT_TRUE(in.eof());
  int v = 0;
  EXPECT_TRUE(open("#anything at all\r ignored\n 7").read(v));
  EXPECT_EQ(v, 7);
  EXPECT_EQ(in.getLineNumber(), 2);

  for (const char* text : {" #VRML V2.0 utf8\n1", "VRML 1", ""}) {
    SCOPED_TRACE(text);
    open(text);
    EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_FALSE(in.read(v)); }),
              error("File does not have a valid header string", 1));
    // A refused header fails every later read, without a second message.
    char c = 'x';
    EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_FALSE(in.get(c)); }), "");
    EXPECT_EQ(c, static_cast<char>(255));
  }
}

TEST_F(vlInputTest, IntegersInEveryBaseLeaveTheInputAfterTheLastDigit) {
  struct Case {
    const char* text;
    bool ok;
    long value;
    const char* rest;
  } cases[] = {
      {"0x1F", true, 31, ""},   {"017", true, 15, ""},    {"0X1F", true, 0, "X1F"}, {"019 ", true, 1, " "},
      {" -12,", true, -12, ","}, {"+7", true, 7, ""},     {"0xg", false, 0, "g"},   {"-x", false, 0, "x"},
      {"- 5", false, 0, " 5"},  {"abc", false, 0, "abc"}, {"12abc", true, 12, "abc"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    long v = -99;
    EXPECT_EQ(openBody(c.text).read(v), c.ok);
    if (c.ok) {
      EXPECT_EQ(v, c.value);
    }
    EXPECT_EQ(rest(), c.rest);
  }

  // Widths: out-of-range values saturate; the 16-bit forms keep the low bits.
  auto next = [&](auto v) {
    EXPECT_TRUE(in.read(v));
    return v;
  };
  openBody("99999999999 -99999999999 99999999999 70000 0xFFFFFFFFF 0x1FFFF 99999999999999999999");
  EXPECT_EQ(next(0), INT_MAX);
  EXPECT_EQ(next(0), INT_MIN);
  EXPECT_EQ(next(0L), 99999999999L);
  EXPECT_EQ(next(short()), 4464);
  EXPECT_EQ(next(0u), UINT_MAX);
  EXPECT_EQ(next(static_cast<unsigned short>(0)), 0xFFFF);
  EXPECT_EQ(next(0UL), ULONG_MAX);
  // Unsigned integers take no sign.
  unsigned u;
  EXPECT_FALSE(openBody("-5").read(u));
  EXPECT_EQ(rest(), "-5");
}

TEST_F(vlInputTest, RealsConvertExactlyAsTheCLibraryDoes) {
  struct Case {
    const char* text;
    bool ok;
    const char* rest;
  } cases[] = {
      {"-.5e2", true, ""},    {"1e", false, ""},        {"1e+x", false, "x"},  {"3.", true, ""},
      {".25]", true, "]"},    {"1E3", true, ""},        {"2e-3", true, ""},    {".", false, ""},
      {"abc", false, "abc"},  {"0x1F", true, "x1F"},    {"-0", true, ""},      {"1e400", true, ""},
      {"123456789012345678901234567890e-30", true, ""}, {"0.000000000000000000000000001234", true, ""},
      {"9007199254740993", true, ""},                   {"1.7976931348623157e308", true, ""},
      // Values that are not finite, as the text output writes them.
      {"-inf,", true, ","},   {"nan]", true, "]"},      {"-nan", true, ""},    {"inx", false, "inx"},
      // A word that only begins like them is left whole, the sign taken.
      {"-nab", false, "nab"}, {"none", false, "none"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    double v = 42;
    EXPECT_EQ(openBody(c.text).read(v), c.ok);
    if (c.ok) {
      std::string taken(c.text, strlen(c.text) - strlen(c.rest));
      double expected = atof(taken.c_str());
      EXPECT_TRUE(v == expected || (std::isnan(v) && std::isnan(expected)));
      EXPECT_EQ(std::signbit(v), std::signbit(expected));
    }
    EXPECT_EQ(rest(), c.rest);
  }
}

// Number lists read with the fast runs where they apply and the general
// reads elsewhere, as the scene reader does, give the very values and line
// numbers of the general reads alone: across buffer ends, comments, commas
// and every form the runs leave to the general reads. The general reads of
// reals give what the C library makes of them; floats are the double narrowed.
TEST_F(vlInputTest, NumberRunsReadWhatTheGeneralReadsRead) {
  std::mt19937 random(11);
  const char* const reals[] = {"%.*f", "%.*f", "%.*f", "-%.*f", "-%.*f", "%.*e", "-%.*g", "+%.*f"};
  const char* const ints[] = {"%d", "%d", "%d", "-%d", "+%d", "0%o", "0x%x", "%d0000000000"};
  const char* const gaps[] = {" ", " ", "\n", ", ", ",", " ,\n", "\t# note, 1 2\n", "  "};
  for (unsigned group : {0u, 1u, 3u}) {
    SCOPED_TRACE(group);
    unsigned numbers = group ? group : 1;
    std::string text;
    std::vector<double> expected, general, fast;
    int count = 30000 - 30000 % int(numbers);
    for (int k = 0; k < count; ++k) {
      char number[64];
      if (group) {
        snprintf(number, sizeof number, reals[random() % 8], int(random() % 19),
                 std::ldexp(double(random()), int(random() % 60) - 60));
        expected.push_back(strtod(number, nullptr));
      } else {
        snprintf(number, sizeof number, ints[random() % 8], int(random() % 100000));
      }
      text += number;
      text += (k + 1) % numbers ? " " : gaps[random() % 8];
    }
    text += "]";
    char c;
    double v;
    int i;
    openBody(text);
    while (in.peek(c) && c != ']') {
      if (c == ',')
        in.read(c);
      else if (group ? in.read(v) : in.read(i))
        general.push_back(group ? v : i);
      else
        break;
    }
    int generalLine = in.getLineNumber();
    ASSERT_EQ(general.size(), size_t(count));
    if (group) {
      EXPECT_EQ(general, expected);
      for (double& g : general) g = double(float(g));
    }
    openBody(text);
    in.peek(c);
    EXPECT_EQ(group ? in.readFloatRun(nullptr, 64, group) : in.readIntRun(nullptr, 64), 0u) << "nowhere to store";
    std::vector<float> floats(64);
    std::vector<int> integers(64);
    while (in.peek(c) && c != ']') {
      unsigned n = group ? in.readFloatRun(floats.data(), 64, group) : in.readIntRun(integers.data(), 64);
      for (unsigned k = 0; k < n; ++k) fast.push_back(group ? double(floats[k]) : integers[k]);
      if (n) continue;
      // One element the general way, and its comma.
      for (unsigned k = 0; k < numbers; ++k) {
        ASSERT_TRUE(group ? in.read(v) : in.read(i)) << fast.size();
        fast.push_back(group ? double(float(v)) : i);
      }
      if (in.peek(c) && c == ',') in.read(c);
    }
    EXPECT_EQ(fast, general);
    EXPECT_EQ(in.getLineNumber(), generalLine);
    EXPECT_EQ(rest(), "]");
  }
}

TEST_F(vlInputTest, BooleansAreTrueFalseOneOrZero) {
  unsigned char b = 7;
  openBody("TRUE FALSE 1 0");
  for (unsigned char expected : {1, 0, 1, 0}) {
    ASSERT_TRUE(in.readBool(b));
    EXPECT_EQ(b, expected);
  }
  for (auto [text, message] : {std::pair{"[", "Unknown value (\"(must be TRUE or FALSE)\") for vlSFBool"},
                               std::pair{"257", "Illegal value for vlSFBool: 1 (must be 0 or 1)"}}) {
    openBody(text);
    EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_FALSE(in.readBool(b)); }), error(message, 2)) << text;
  }
}

TEST_F(vlInputTest, LinesCountInWhiteSpaceCommentsAndQuotedStrings) {
  nrString s;
  openBody("# one\n\n\"two\nlines\" # three\n  true");
  ASSERT_TRUE(in.read(s));
  EXPECT_STREQ(s.getString(), "two\nlines");
  unsigned char b;
  EXPECT_EQ(nrtest::captureStderr([&] { in.readBool(b); }),
            error("Unknown value (\"(must be TRUE or FALSE)\") for vlSFBool", 6));

  int v;
  openBody("5 # last line");
  EXPECT_TRUE(in.read(v));
  char c;
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_FALSE(in.read(c)); }),
            error("EOF reached before end of comment", 2));
}

TEST_F(vlInputTest, StringTokensAreQuotedWithEscapesOrEndAtWhiteSpace) {
  std::string longText(600, 'q');
  struct Case {
    std::string text, value, rest;
  } cases[] = {
      {"\"a\\\"b\"", "a\"b", ""},
      {"\"a\\\\b\"", "a\\\\b", ""},
      {"\"a\\nb\" x", "a\\nb", " x"},
      {"\"\"", "", ""},
      {"url\t[", "url", "\t["},
      {"\"" + longText + "\"", longText, ""},
      {longText + " ", longText, " "},
      {"\"open", "open", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    nrString s;
    ASSERT_TRUE(openBody(c.text).read(s));
    EXPECT_EQ(s.getString(), c.value);
    EXPECT_EQ(rest(), c.rest);
  }
  nrString s;
  EXPECT_FALSE(openBody("  ").read(s));

  // A string of many megabytes reads in time proportional to its length.
  const size_t size = 16 << 20;
  vlInput& input = openBody("\"" + std::string(size, 'h') + "\"");
  auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(input.read(s));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_EQ(strlen(s.getString()), size);
}

TEST_F(vlInputTest, IdentifiersAndNames) {
  nrName n;
  using Texts = std::pair<std::string, std::string>;
  auto name = [&](const std::string& body, int ident) {
    EXPECT_TRUE(openBody(body).read(n, ident)) << body;
    return Texts(n.getString(), rest());
  };
  EXPECT_EQ(name("  Transform{", 1), Texts("Transform", "{"));
  // A character that cannot start an identifier gives the empty name.
  EXPECT_EQ(name("9abc", 1), Texts("", "9abc"));
  // Identifiers keep 255 characters and drop the rest of the word.
  EXPECT_EQ(name(std::string(300, 'i') + " x", 1), Texts(std::string(255, 'i'), " x"));
  EXPECT_EQ(name("\"a name\"", 0), Texts("a name", ""));
  EXPECT_FALSE(openBody("").read(n, 1));

  struct Case {
    char c;
    bool ident, identStart, nodeName;
  } cases[] = {
      {'a', 1, 1, 1},  {'Z', 1, 1, 1},  {'5', 1, 0, 1},  {'_', 1, 1, 1},    {'-', 1, 1, 1},
      {'%', 1, 1, 1},  {'.', 0, 0, 1},  {'[', 0, 0, 1},  {',', 0, 0, 1},    {'#', 0, 0, 1},
      {'+', 0, 0, 0},  {'\'', 0, 0, 0}, {'"', 0, 0, 0},  {'\\', 0, 0, 0},   {'{', 0, 0, 0},
      {'}', 0, 0, 0},  {' ', 0, 0, 0},  {'\t', 0, 0, 0}, {'\x01', 0, 0, 0}, {'\xe9', 0, 0, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(int(c.c));
    EXPECT_EQ(vlInput::isIdentChar(c.c), c.ident);
    EXPECT_EQ(vlInput::isIdentStartChar(c.c), c.identStart);
    EXPECT_EQ(vlInput::isNodeNameStartChar(c.c), c.identStart);
    EXPECT_EQ(vlInput::isNodeNameChar(c.c), c.nodeName);
  }
}

TEST_F(vlInputTest, PushedBackTextIsReadBeforeTheStream) {
  openBody("Group");
  char c;
  in.putBack("DEF G ");
  ASSERT_TRUE(in.get(c));
  in.putBack(c);
  in.putBack(static_cast<char>(255));
  nrName n;
  for (const char* word : {"DEF", "G", "Group"}) {
    ASSERT_TRUE(in.read(n, 1));
    EXPECT_STREQ(n.getString(), word);
  }
  EXPECT_FALSE(in.get(c));
  EXPECT_TRUE(in.eof());
}

TEST_F(vlInputTest, TheStreamStaysInStepWithTheReader) {
  for (bool buffered : {true, false}) {
    SCOPED_TRACE(buffered);
    openBody("12 0X1F -3.5e1 \"q\" a");
    if (!buffered) setvbuf(file, nullptr, _IONBF, 0);
    int i;
    ASSERT_TRUE(in.read(i));
    EXPECT_EQ(fgetc(file), ' ');
    ASSERT_TRUE(in.read(i));
    EXPECT_EQ(fgetc(file), 'X');
    ungetc('Y', file);
    nrName n;
    ASSERT_TRUE(in.read(n, 1));
    EXPECT_STREQ(n.getString(), "Y1F");
    double d;
    ASSERT_TRUE(in.read(d));
    EXPECT_EQ(d, -35);
    nrString s;
    ASSERT_TRUE(in.read(s));
    in.putBack('"');
    EXPECT_EQ(fgetc(file), '"');
    char c;
    ASSERT_TRUE(in.read(c));
    EXPECT_FALSE(in.get(c));
    EXPECT_TRUE(in.eof());
    // Giving a character back clears the end of input, as ungetc does.
    in.putBack('z');
    EXPECT_FALSE(in.eof());
    EXPECT_EQ(fgetc(file), 'z');
  }
}

TEST_F(vlInputTest, DefinitionsNameTheirContainersAndTheLaterWins) {
  nrContainer *a = nrtest::held<nrContainer>(), *b = nrtest::held<nrContainer>();
  in.addReference("T", a);
  EXPECT_STREQ(a->getName(), "T");
  in.addReference("T", b);
  EXPECT_EQ(in.findReference("T"), b);
  EXPECT_EQ(in.findReference("U"), nullptr);
  in.addReference("T", nullptr);
  EXPECT_EQ(in.findReference("T"), nullptr);
  nrtest::unref(a, b);
}

TEST(vlDebugError, NamesTheFunction) {
  EXPECT_EQ(nrtest::captureStderr([] { vlDebugError::post("vlDB::readNodeInstance", "Reading Inline %s", "a.wrl"); }),
            "vl error in vlDB::readNodeInstance(): Reading Inline a.wrl\n");
  const char* none = nullptr;
  EXPECT_EQ(nrtest::captureStderr([&] {
              vlDebugError::post(none, none);
              vlReadError::post(nullptr, none);
            }),
            "vl error in (): \nvl read error: \n\n");
}

}  // namespace
