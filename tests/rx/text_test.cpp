#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>

#include "quorl/rx/print.h"
#include "quorl/rx/real_format.h"
#include "support/told_cases.h"

namespace {

TEST(RealFormat, IsTheShortestTextWithATail) {
  runToldCases("rx/real_format_cases.txt", 24,
               [](const std::string&, const std::string& input, const Lines&) {
                 const size_t blank = input.rfind(' ');
                 const ZnString format =
                     ZnString::fromUtf8(input.substr(0, blank) == "(empty)" ? "" : input.substr(0, blank));
                 const std::string text =
                     znrxFormatReal(std::strtod(input.c_str() + blank, nullptr), format.c_str()).utf8();
                 return text.empty() ? Lines() : Lines{text};
               });
  EXPECT_TRUE(znrxFormatReal(5.0, nullptr).isEmpty());
}

RC_GTEST_PROP(RealFormat, TheTextReadsBack, (double value)) {
  RC_PRE(std::isfinite(value));
  const std::string text = znrxFormatReal(value, L"%.24q1").utf8();
  RC_ASSERT(std::strtod(text.c_str(), nullptr) == value);
  RC_ASSERT(text.find_first_of("eE") == std::string::npos);
}

TEST(Print, NoSinkMeansTheStandardOutput) {
  ZnPrintSink before = znutSetPrintSink(nullptr);
  testing::internal::CaptureStdout();
  znutPrintf(L"%s=%d\n", L"Ø", 5);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Ø=5\n");
  znutSetPrintSink(before);
}

} // namespace
