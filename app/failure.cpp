#include "app/failure.h"

namespace app {

std::string Failure::text() const {
  std::string text = file;
  if (line > 0) text += ":" + std::to_string(line);
  if (!text.empty()) text += ": ";
  text += what;
  if (!expected.empty()) text += ", expected " + expected;
  return text;
}

bool Failure::set(std::string inFile, int atLine, std::string found, std::string wanted) {
  file = std::move(inFile);
  line = atLine;
  what = std::move(found);
  expected = std::move(wanted);
  return false;
}

namespace {

struct Sentence {
  Quorl::ErrorStatus status;
  const char* text;
};

constexpr Sentence kSentences[] = {
    {Quorl::eOnLockedLayer, "it is on a locked layer"},
    {Quorl::eWasErased, "it is erased"},
    {Quorl::ePermanentlyErased, "it does not exist"},
    {Quorl::eNonUniformScale, "it can only be scaled alike in all directions"},
    {Quorl::eDegenerateGeometry, "nothing would be left of its shape"},
    {Quorl::eOutOfRange, "the value is out of range"},
    {Quorl::eInvalidInput, "the value is not usable"},
    {Quorl::eInvalidName, "the name has characters that names can't have"},
    {Quorl::eDuplicateKey, "the name is taken"},
    {Quorl::eKeyNotFound, "there is nothing of that name"},
    {Quorl::eInvalidOwner, "a block can't contain itself"},
};

} // namespace

std::string statusSentence(Quorl::ErrorStatus status) {
  for (const Sentence& row : kSentences)
    if (row.status == status) return row.text;
  return std::string("the host answered ") + Quorl::errorStatusText(status);
}

} // namespace app
