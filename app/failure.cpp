#include "app/failure.h"

namespace app {

namespace {

struct Sentence {
  Quorl::ErrorStatus status;
  const char *text, *expected;
};

constexpr Sentence kSentences[] = {
    {Quorl::eOnLockedLayer, "it is on a locked layer", "one on a layer that is not locked"},
    {Quorl::eWasErased, "it is erased", "one that is there"},
    {Quorl::ePermanentlyErased, "it does not exist", "one that is there"},
    {Quorl::eNonUniformScale, "it can only be scaled alike in all directions", "one factor"},
    {Quorl::eDegenerateGeometry, "nothing would be left of its shape", "a change that leaves some"},
    {Quorl::eOutOfRange, "the value is out of range", "one that a drawing can hold"},
    {Quorl::eInvalidInput, "the value is not usable", "a finite one of the right kind"},
    {Quorl::eInvalidName, "the name has characters that names can't have", "letters, digits and blanks"},
    {Quorl::eDuplicateKey, "the name is taken", "a name of its own"},
    {Quorl::eKeyNotFound, "there is nothing of that name", "a name that was given"},
    {Quorl::eInvalidOwner, "a block can't contain itself", "another block"},
};

} // namespace

std::string statusSentence(Quorl::ErrorStatus status) {
  for (const Sentence& row : kSentences)
    if (row.status == status) return row.text;
  return std::string("the host answered ") + Quorl::errorStatusText(status);
}

std::string statusExpectation(Quorl::ErrorStatus status) {
  for (const Sentence& row : kSentences)
    if (row.status == status) return row.expected;
  return {};
}

} // namespace app
