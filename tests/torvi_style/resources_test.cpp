#include "torvi/style/resources.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>
#include <vector>

#include "torvi/style/message_numbers.h"

namespace {

using Texts = std::map<unsigned, std::string>;

std::vector<Texts> allLanguages() {
  std::vector<Texts> languages;
  for (const char* language : {"en-US", "de-DE"}) {
    const std::string file = std::string(QUORL_BIN_DIR "/") + language + "/ZnDbTorviRes.dll";
    const ZnUtResource::Handle library = ZnUtResource::loadDll(ZnString::fromUtf8(file));
    EXPECT_NE(library, nullptr) << file;
    if (!library) continue;
    const auto table = reinterpret_cast<const ZnRxResourceText* (*)()>(dlsym(library, "znrxResourceTable"));
    Texts texts;
    for (const ZnRxResourceText* entry = table(); entry->text; ++entry)
      EXPECT_TRUE(texts.emplace(entry->number, ZnString(entry->text).utf8()).second) << entry->number;
    languages.push_back(texts);
    ZnUtResource::freeDll(library);
  }
  return languages;
}

std::vector<std::string> placeholders(const std::string& text) {
  static const std::regex pattern("%[^a-zA-Z]*[a-zA-Z]");
  std::vector<std::string> found;
  for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it)
    found.push_back(it->str());
  return found;
}

TEST(Texts, EveryLanguageHasEveryNumberWithTheSamePlaceholders) {
  const std::vector<Texts> languages = allLanguages();
  ASSERT_EQ(languages.size(), 2u);
  for (const auto& [number, text] : languages[0]) {
    ASSERT_TRUE(languages[1].contains(number)) << number;
    EXPECT_FALSE(text.empty() || languages[1].at(number).empty()) << number;
    EXPECT_EQ(placeholders(text), placeholders(languages[1].at(number))) << number;
  }
  EXPECT_EQ(languages[0].size(), languages[1].size());
}

TEST(Texts, TheLanguageIsTheHostsAtTheTimeOfLoading) {
  struct {
    const wchar_t* language;
    const char* mark;
  } const rows[] = {{L"en-US", "Center Mark"}, {L"de-DE", "Zentrumsmarke"}, {L"xx-XX", ""}};
  const ZnString usual = hostLanguage();
  for (const auto& row : rows) {
    setHostLanguage(row.language);
    ZnTorviResources::load();
    EXPECT_EQ(ZnTorviResources::text(kTorviMsgMarkTypeName).utf8(), row.mark);
    EXPECT_EQ(ZnTorviResources::text(1).utf8(), "");
    ZnTorviResources::release();
    EXPECT_FALSE(ZnTorviResources::isLoaded());
    EXPECT_TRUE(ZnTorviResources::text(kTorviMsgMarkTypeName).isEmpty());
  }
  setHostLanguage(usual);
}

} // namespace
