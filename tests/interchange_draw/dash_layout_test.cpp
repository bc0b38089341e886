// What every layout of dashes must keep, whatever the pattern and the length.
#include "interchange/draw/dash_layout.h"

#include "support/told_cases.h"

#include <fmt/format.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

using namespace interchange;

namespace {

constexpr double kNear = 1e-9;

struct NamedPattern {
  const char* name;
  DashPattern pattern;
  double longest;
};

const NamedPattern kPatterns[] = {
    {"long and short", {{12, -2, 2, -2}, false}, 12},
    {"dashes", {{3, -1.5}, false}, 3},
    {"dash and dot", {{8, -2, 0, -2}, false}, 8},
    {"dash and two dots", {{8, -2, 0, -2, 0, -2}, false}, 8},
    {"two shorts", {{16, -2, 3, -2, 3, -2}, false}, 16},
    {"two longs and a dot", {{8, -2, 8, -2, 0, -2}, false}, 8},
    {"no axis of symmetry", {{5, -1, 3, -2, 1, -3}, false}, 5},
    {"begins with a gap", {{-2, 2, -2, 12}, false}, 12},
    {"stretched to fit", {{12, -2, 2, -2}, true}, 12},
};

double inkOf(const std::vector<DashSpan>& spans) {
  double sum = 0;
  for (const DashSpan& span : spans) sum += span.end - span.start;
  return sum;
}

bool isContinuous(const std::vector<DashSpan>& spans, double length) {
  return spans.size() == 1 && spans[0].start == 0 && std::abs(spans[0].end - length) < kNear;
}

bool isInDash(const std::vector<DashSpan>& spans, double at) {
  return std::any_of(spans.begin(), spans.end(), [at](const DashSpan& span) {
    return !span.isDot() && span.start < at && at < span.end;
  });
}

const NamedPattern& anyPattern() {
  return kPatterns[*rc::gen::inRange<std::size_t>(0, std::size(kPatterns))];
}

double anyLength() { return *rc::gen::inRange(1, 4000000) / 10000.0; }

} // namespace

RC_GTEST_PROP(DashLayout, open_lines_are_symmetric_and_end_in_dashes, ()) {
  const NamedPattern& named = anyPattern();
  const double length = anyLength();
  const std::vector<DashSpan> spans = layOutDashes(named.pattern, length, false);
  RC_ASSERT(!spans.empty());
  RC_ASSERT(spans.front().start == 0);
  RC_ASSERT(spans.back().end == length);
  for (std::size_t i = 0; i < spans.size(); ++i) {
    const DashSpan& mirror = spans[spans.size() - 1 - i];
    RC_ASSERT(std::abs(spans[i].start - (length - mirror.end)) < kNear);
    RC_ASSERT(std::abs(spans[i].end - (length - mirror.start)) < kNear);
    if (i > 0) RC_ASSERT(spans[i].start > spans[i - 1].end);
  }
  if (isContinuous(spans, length)) RC_SUCCEED("too short for the pattern");
  const double shrink = named.pattern.scaledToFit ? 0.5 : 1;
  RC_ASSERT(spans.front().end > shrink * named.longest / 2 - kNear);
}

RC_GTEST_PROP(DashLayout, crossing_lines_cross_in_dashes, ()) {
  const NamedPattern& named = kPatterns[*rc::gen::element<std::size_t>(0, 4, 8)];
  const double length = anyLength();
  RC_ASSERT(isInDash(layOutDashes(named.pattern, length, false), length / 2));
}

// The dashes between the end dashes and all gaps are those of the pattern.
RC_GTEST_PROP(DashLayout, only_end_dashes_differ_from_the_pattern, ()) {
  const NamedPattern& named = kPatterns[*rc::gen::inRange<std::size_t>(0, 8)];
  const double length = anyLength();
  const std::vector<DashSpan> spans = layOutDashes(named.pattern, length, false);
  const auto isOf = [&named](double element) {
    return std::any_of(named.pattern.lengths.begin(), named.pattern.lengths.end(),
                       [element](double own) { return std::abs(own - element) < kNear; });
  };
  for (std::size_t i = 1; i < spans.size(); ++i) {
    RC_ASSERT(isOf(spans[i - 1].end - spans[i].start));
    if (i + 1 < spans.size()) RC_ASSERT(isOf(spans[i].end - spans[i].start));
  }
}

RC_GTEST_PROP(DashLayout, closed_curves_take_whole_repeats, ()) {
  const NamedPattern& named = anyPattern();
  const double length = anyLength();
  double period = 0, drawn = 0;
  for (const double own : named.pattern.lengths) period += std::abs(own), drawn += std::max(own, 0.0);
  const std::vector<DashSpan> spans = layOutDashes(named.pattern, length, true);
  if (isContinuous(spans, length)) {
    RC_ASSERT(length < period);
    RC_SUCCEED("too short for the pattern");
  }
  RC_ASSERT(std::abs(inkOf(spans) - length * drawn / period) < kNear * length);
  // Each repeat brings every dash and dot once.
  const double repeats = std::max(1.0, std::round(length / period));
  const auto own = std::count_if(named.pattern.lengths.begin(), named.pattern.lengths.end(),
                                 [](double element) { return element >= 0; });
  RC_ASSERT(static_cast<double>(spans.size()) == repeats * static_cast<double>(own));
  RC_ASSERT(std::abs(spans.back().start + spans.back().end - 2 * length) < kNear);
}

TEST(DashLayout, OfKnownLengthsIsAsTold) {
  runToldCases("interchange_draw/dash_cases.txt", 16,
               [](const std::string&, const std::string& input, const Lines&) {
                 const std::size_t bar = input.find('|');
                 DashPattern pattern{{}, input.find("fit") != std::string::npos};
                 std::istringstream lengths(input.substr(0, bar));
                 for (double length; lengths >> length;) pattern.lengths.push_back(length);
                 std::string text;
                 for (const DashSpan& span : layOutDashes(pattern, std::stod(input.substr(bar + 1)),
                                                          input.find("closed") != std::string::npos))
                   text += fmt::format("{}{:.6g}..{:.6g}", text.empty() ? "" : " ", span.start, span.end);
                 return text.empty() ? Lines() : Lines{text};
               });
}
