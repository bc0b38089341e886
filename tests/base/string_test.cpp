#include "quorl/base/string.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

TEST(String, FormatsWideTextsAndNumbers) {
  const ZnString name(L"Größe");
  ZnString text;
  EXPECT_EQ(text.format(L"%s=%d", name.c_str(), 3), L"Größe=3");
  EXPECT_EQ(text.format(L"%-8s|%5.2f|%%", L"ab", 1.5), L"ab      | 1.50|%");
  EXPECT_EQ(text.format(L"%ls %hs", L"wide", "narrow"), L"wide narrow");
  EXPECT_EQ(text.format(L"%.*s", 2, L"abc"), L"ab");
  EXPECT_EQ(text.format(L"100%"), L"100%");
  const std::wstring longText(5000, L'q');
  EXPECT_EQ(text.format(L"<%s>", longText.c_str()).length(), 5002);
  // The text may be its own argument.
  text = L"again";
  EXPECT_EQ(text.format(L"%s %s", text.c_str(), text.c_str()), L"again again");
}

TEST(String, Utf8OfWellFormedTexts) {
  struct Case {
    const wchar_t* wide;
    const char* bytes;
  };
  const Case cases[] = {
      {L"", ""},
      {L"plain", "plain"},
      {L"\u007f\u0080\u07ff\u0800", "\x7f\xC2\x80\xDF\xBF\xE0\xA0\x80"},
      {L"\uffff\U00010000\U0010ffff", "\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ZnString(c.wide).utf8(), c.bytes);
    EXPECT_EQ(ZnString::fromUtf8(c.bytes), c.wide);
  }
}

TEST(String, EachMalformedByteBecomesAMark) {
  struct Case {
    const char* what;
    std::string_view bytes;
    const wchar_t* wide;
  };
  const Case cases[] = {
      {"lone continuation", "a\x80z", L"a\uFFFDz"},
      {"cut at the end", "a\xE2\x82", L"a\uFFFD\uFFFD"},
      {"cut by a letter", "\xE2\x82z", L"\uFFFD\uFFFDz"},
      {"overlong slash", "\xC0\xAF", L"\uFFFD\uFFFD"},
      {"overlong of three", "\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},
      {"surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
      {"above the last character", "\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"no lead byte", "\xFF\xFE", L"\uFFFD\uFFFD"},
  };
  for (const Case& c : cases) EXPECT_EQ(ZnString::fromUtf8(c.bytes), c.wide) << c.what;
  const wchar_t surrogate[] = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
  EXPECT_EQ(ZnString(surrogate).utf8(), "a\xEF\xBF\xBD\xEF\xBF\xBD");
}

// Whatever bytes come in, what goes out is well formed: reading it again changes nothing.
RC_GTEST_PROP(String, DecodingSettles, (const std::string& bytes)) {
  const ZnString once = ZnString::fromUtf8(bytes);
  RC_ASSERT(ZnString::fromUtf8(once.utf8()) == once);
}

TEST(String, ComparesWithoutCase) {
  struct Case {
    const wchar_t* a;
    const wchar_t* b;
    int sign;
  };
  const Case cases[] = {
      {L"ByLinetype", L"BYLINETYPE", 0},
      {L"", L"", 0},
      {L"a", L"B", -1},
      {L"B", L"a", 1},
      {L"ab", L"ABC", -1},
      {L"_", L"A", -1},
      {L"x ", L"X", 1},
      {L"", L"a", -1},
  };
  for (const Case& c : cases) {
    const int order = ZnString(c.a).compareNoCase(c.b);
    EXPECT_EQ((order > 0) - (order < 0), c.sign) << ZnString(c.a).utf8() << " " << ZnString(c.b).utf8();
    EXPECT_EQ(ZnString(c.a).equalsNoCase(c.b), c.sign == 0);
  }
}

TEST(String, Trims) {
  struct Case {
    const wchar_t* text;
    const wchar_t* set;
    const wchar_t* left;
    const wchar_t* both;
  };
  const Case cases[] = {
      {L"\"\"CENTER\"", L"\"", L"CENTER\"", L"CENTER"},
      {L" \ta b\r\n", L" \t\r\n", L"a b\r\n", L"a b"},
      {L"\"\"", L"\"", L"", L""},
      {L"", L" ", L"", L""},
  };
  for (const Case& c : cases) {
    ZnString text(c.text);
    EXPECT_EQ(text.trimLeft(c.set), c.left);
    EXPECT_EQ(text.trimRight(c.set), c.both);
    EXPECT_EQ(text.isEmpty(), text.length() == 0);
  }
}

TEST(String, ReadsLeadingNumbers) {
  struct Case {
    const wchar_t* text;
    bool read;
    double value;
  };
  const Case cases[] = {
      {L"0.1x", true, 0.1}, {L"  +2.5", true, 2.5}, {L"-.5e1q", true, -5.0}, {L"", false, 7.0},
      {L"x", false, 7.0},   {L"  ", false, 7.0},    {L"1,5", true, 1.0},     {L"\r\n\v\f\t3", true, 3.0},
      {L"+-5", false, 7.0}, {L"-+5", false, 7.0},   {L"+", false, 7.0},
  };
  for (const Case& c : cases) {
    double value = 7.0;
    EXPECT_EQ(ZnString(c.text).parseVal(value), c.read) << ZnString(c.text).utf8();
    EXPECT_DOUBLE_EQ(value, c.value) << ZnString(c.text).utf8();
  }
}

} // namespace
