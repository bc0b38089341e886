#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <limits>

#include "quorl/rx/print.h"
#include "quorl/rx/real_format.h"

namespace {

TEST(RealFormat, ShortestTextWithATail) {
  struct Case {
    double value;
    const wchar_t* format;
    const wchar_t* text;
  };
  const Case cases[] = {
      {0.9, L"%.24q1x", L"0.9x"},
      {1.0 - 2.0 * 0.05, L"%.24q1x", L"0.9x"},
      {(1.0 - 0.8) * 0.5, L"%.24q1x", L"0.09999999999999998x"},
      {1.0 / 3.0, L"%.24q1", L"0.3333333333333333"},
      {1.0 / 3.0, L"%.3q1", L"0.333"},
      {2.0 / 3.0, L"%.3q1 mm", L"0.667 mm"},
      {0.0, L"%.24q1x", L"0x"},
      {-0.0, L"%.24q1x", L"0x"},
      {-2.5, L"%.24q1", L"-2.5"},
      {100.0, L"%.24q1", L"100"},
      {123456.0, L"%.2q1", L"120000"},
      {99.96, L"%.3q1", L"100"},
      {1e-7, L"%.24q1", L"0.0000001"},
      {1e21, L"%.24q1", L"1000000000000000000000"},
      {5.0, L"%.24q12", L"52"},
      {5.0, L"%.24q2x", L""},
      {5.0, L"%.0q1x", L""},
      {5.0, L"%.q1x", L""},
      {5.0, L"%24q1x", L""},
      {5.0, L"%.24f", L""},
      {5.0, L"%.24q", L""},
      {5.0, L"", L""},
      {5.0, nullptr, L""},
      {std::numeric_limits<double>::infinity(), L"%.24q1x", L""},
      {std::numeric_limits<double>::quiet_NaN(), L"%.24q1x", L""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(znrxFormatReal(c.value, c.format).utf8(), ZnString(c.text).utf8())
        << c.value << " " << ZnString(c.format).utf8();
}

RC_GTEST_PROP(RealFormat, TheTextReadsBack, (double value)) {
  RC_PRE(std::isfinite(value));
  const std::string text = znrxFormatReal(value, L"%.24q1").utf8();
  RC_ASSERT(std::strtod(text.c_str(), nullptr) == value);
  RC_ASSERT(text.find_first_of("eE") == std::string::npos);
}

TEST(Print, GoesToTheSinkThatIsSet) {
  ZnString seen;
  ZnPrintSink before = znutSetPrintSink([&seen](const ZnString& text) { seen += text; });
  znutPrintf(L"%s has %d edges, %.1f%%\n", L"Grün", 4, 12.5);
  znutPrintf(L"done");
  ZnString other;
  ZnPrintSink first = znutSetPrintSink([&other](const ZnString& text) { other += text; });
  znutPrintf(L"%s", L"elsewhere");
  first(L"!");
  znutSetPrintSink(before);
  EXPECT_EQ(seen.utf8(), "Grün has 4 edges, 12.5%\ndone!");
  EXPECT_EQ(other, L"elsewhere");
}

TEST(Print, NoSinkMeansTheStandardOutput) {
  ZnPrintSink before = znutSetPrintSink(nullptr);
  testing::internal::CaptureStdout();
  znutPrintf(L"%s=%d\n", L"Ø", 5);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Ø=5\n");
  znutSetPrintSink(before);
}

} // namespace
