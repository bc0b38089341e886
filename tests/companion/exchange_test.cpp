// What program and companion tell each other comes back from JSON as it was.
#include <gtest/gtest.h>

#include "exchange/annotate.h"
#include "exchange/center_commands.h"

namespace {

using exchange::Json;

template<class Record> Json thereAndBack(const Json& json) {
  Record record;
  std::string wrong;
  EXPECT_TRUE(exchange::fromJson(json, record, wrong)) << wrong;
  return exchange::toJson(record);
}

TEST(Exchange, WhatIsThereComesBackInItsOrder) {
  struct {
    const char* text;
    Json (*pass)(const Json&);
  } const cases[] = {
      {R"({"handle":"1A","kind":"K","associative":true,"layer":"L","linetype":"D","edges":["2F/1A"],
           "center":[1.0,2.5,0.0],"radius":null,"startExtension":1.0,"endExtension":2.0,
           "startOvershoot":3.0,"endOvershoot":4.0,"transform":[[1.0,0.0,0.0,0.0],[0.0,1.0,0.0,0.0],
           [0.0,0.0,1.0,0.0],[0.0,0.0,0.0,1.0]],"curves":[{"index":3,"key":"k","type":"line",
           "start":[0.0,0.0,0.0],"end":[1.0,0.0,0.0],"center":null,"radius":null,"startAngle":null,
           "endAngle":null,"visible":false,"linetype":"D"}]})",
       thereAndBack<exchange::ReportedCenter>},
      {R"({"isNew":true,"handle":null,"edges":[{"edge":"1","index":2}],"ends":[],"evidence":"e"})",
       thereAndBack<exchange::AnnotatedLine>},
      {R"({"isNew":false,"handle":"1","edges":[],"evidence":"e"})", thereAndBack<exchange::AnnotatedLine>},
      {R"({"objects":[],"edges":[{"path":["1","2"],"index":1}],"picks":[null,[1.0,2.0,3.0]]})",
       thereAndBack<exchange::CenterWish>}};
  for (const auto& row : cases) {
    const Json json = Json::parse(row.text);
    EXPECT_EQ(row.pass(json).dump(), json.dump());
  }
  EXPECT_EQ(exchange::toJson(-0.0).dump() + exchange::toJson(HUGE_VAL).dump(), "0.0null");
}

} // namespace
