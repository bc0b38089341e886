// Colors, and the linetype file.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "quorl/db/core/color.h"
#include "quorl/db/table/linetype_file.h"
#include "support/told_cases.h"

namespace {

TEST(Color, PackedFormKeepsEverything) {
  std::vector<ZnCmColor> colors;
  for (int index = 0; index <= 256; ++index) colors.push_back(ZnCmColor::fromIndex(index));
  colors.push_back(ZnCmColor::fromRgb(1, 2, 3));
  colors.push_back(ZnCmColor::fromRgb(0, 0, 0));
  for (const ZnCmColor& color : colors) EXPECT_EQ(ZnCmColor::fromPacked(color.packed()), color);
  for (int index = 0; index <= 256; ++index) EXPECT_EQ(ZnCmColor::fromIndex(index).colorIndex(), index);
  EXPECT_EQ(ZnCmColor::fromPacked(0x09000005).method(), ZnCmColor::kByLayer);
  EXPECT_EQ(ZnCmColor::fromPacked(0x02000000).method(), ZnCmColor::kByLayer);
  for (const ZnCmTransparency& t : {ZnCmTransparency(), ZnCmTransparency(0), ZnCmTransparency(255)})
    EXPECT_EQ(ZnCmTransparency::fromPacked(t.packed()), t);
}

TEST(Color, NearestIndexOfAPaletteColorLooksTheSame) {
  EXPECT_EQ(ZnCmColor::fromRgb(250, 10, 5).colorIndex(), 1);
  EXPECT_EQ(ZnCmColor::fromRgb(0, 0, 255).colorIndex(), 5);
  for (int index = 1; index < 256; ++index) {
    const std::uint32_t rgb = ZnCmColor::fromIndex(index).rgb();
    const auto channel = [&](int shift) { return static_cast<std::uint8_t>(rgb >> shift); };
    const ZnCmColor same = ZnCmColor::fromRgb(channel(16), channel(8), channel(0));
    EXPECT_EQ(ZnCmColor::fromIndex(same.colorIndex()).rgb(), rgb) << index;
  }
}

class LinetypeFile : public testing::Test {
protected:
  std::string path = (std::filesystem::temp_directory_path() / "quorl_linetype_test.lin").string();
  std::vector<ZnDbLinetypeDescription> specs;
  ZnString error;
  ~LinetypeFile() override { std::filesystem::remove(path); }
  Quorl::ErrorStatus read(const char* text, const wchar_t* wanted = L"*") {
    std::ofstream(path, std::ios::binary) << text;
    specs.clear();
    return zndbReadLinetypeFile(path, wanted, specs, error);
  }
};

TEST_F(LinetypeFile, ReadsTheStandardSet) {
  const std::string shipped = std::string(QUORL_SOURCE_DIR) + "/quorl/db/table/quorl.lin";
  ASSERT_EQ(zndbReadLinetypeFile(shipped, L"*", specs, error), Quorl::eOk) << error.utf8();
  const auto find = [&](const ZnString& name) -> const ZnDbLinetypeDescription* {
    for (const ZnDbLinetypeDescription& spec : specs)
      if (spec.name.equalsNoCase(name)) return &spec;
    return nullptr;
  };
  for (const wchar_t* name :
       {L"Center", L"Hidden", L"Dashed", L"Dot", L"DashDot", L"Divide", L"Phantom", L"Border"}) {
    const ZnDbLinetypeDescription* whole = find(name);
    ASSERT_NE(whole, nullptr) << ZnString(name).utf8();
    for (const auto& [suffix, factor] : {std::pair(L"2", 0.5), {L"X2", 2.0}}) {
      const ZnDbLinetypeDescription* other = find(name + ZnString(suffix));
      ASSERT_NE(other, nullptr) << ZnString(name).utf8();
      ASSERT_EQ(other->dashes.size(), whole->dashes.size());
      for (size_t i = 0; i < whole->dashes.size(); ++i)
        EXPECT_DOUBLE_EQ(other->dashes[i], whole->dashes[i] * factor);
    }
  }
  EXPECT_EQ(find(L"CENTER")->dashes, (std::vector<double>{12, -2, 2, -2}));
  EXPECT_TRUE(find(L"CENTERFIT")->scaledToFit);
}

TEST_F(LinetypeFile, TakesTheWantedOneOnly) {
  const char* text = "# comment\n\n A |a line| 1 -1\r\nB\u00df | | 2.5 -.5 0 -.5 fit\n";
  ASSERT_EQ(read(text), Quorl::eOk);
  EXPECT_EQ(specs.size(), 2u);
  ASSERT_EQ(read(text, L"b\u00df"), Quorl::eOk);
  ASSERT_EQ(specs.size(), 1u);
  EXPECT_TRUE(specs[0].name == L"B\u00df");
  EXPECT_TRUE(specs[0].description.isEmpty());
  EXPECT_EQ(specs[0].dashes, (std::vector<double>{2.5, -0.5, 0.0, -0.5}));
  EXPECT_TRUE(specs[0].scaledToFit);
  EXPECT_EQ(read(text, L"C"), Quorl::eKeyNotFound);
  EXPECT_EQ(zndbReadLinetypeFile(path + ".absent", L"A", specs, error), Quorl::eNotFound);
}

TEST_F(LinetypeFile, FaultsAreToldByTheirLine) {
  runToldCases("db/linetype_faults.txt", 13,
               [this](const std::string&, const std::string& input, const Lines&) {
                 EXPECT_EQ(read(withLineEnds(input).c_str()), Quorl::eInvalidInput) << input;
                 EXPECT_TRUE(specs.empty()) << input;
                 const std::string told = error.utf8();
                 return Lines{told.starts_with(path + ":") ? told.substr(path.size() + 1) : told};
               });
}

} // namespace
