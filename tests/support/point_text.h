// Points as tables of cases write them: "0,0 4,3 1,2,5", the third coordinate 0 where it is not given.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "quorl/ge/line_seg3d.h"

inline std::vector<ZnGePoint3d> pointsOf(const std::string& text) {
  std::vector<ZnGePoint3d> points;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    ZnGePoint3d point;
    char comma = 0;
    std::istringstream numbers(word);
    numbers >> point.x >> comma >> point.y >> comma >> point.z;
    points.push_back(point);
  }
  return points;
}

inline ZnGeLineSeg3d segmentOf(const std::string& text) {
  const std::vector<ZnGePoint3d> ends = pointsOf(text);
  return {ends.at(0), ends.at(1)};
}
