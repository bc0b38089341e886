// Opens an object for the length of one question or one change.
#pragma once

#include <functional>
#include <utility>

#include "torvi/host/database.h"

namespace torvi {

// The object's answer, or the one for an object that does not open for read. The question is a member
// function with its arguments, or a callable that takes the object first.
template<class Object, class Answer, class Question, class... Arguments>
Answer ask(ZnDbObjectId id, Answer absent, Question&& question, Arguments&&... arguments) {
  ZnDbHolder<Object> object(id);
  return object.isOpen()
             ? std::invoke(std::forward<Question>(question), *object, std::forward<Arguments>(arguments)...)
             : absent;
}

// The same for questions that answer with a status: that of the opening for an object that does not open.
template<class Object, class Question, class... Arguments>
Quorl::ErrorStatus askStatus(ZnDbObjectId id, Question&& question, Arguments&&... arguments) {
  ZnDbHolder<Object> object(id);
  return object.isOpen()
             ? std::invoke(std::forward<Question>(question), *object, std::forward<Arguments>(arguments)...)
             : object.status();
}

// Opens for write. The status is that of the opening, else that of the change.
template<class Object, class Change, class... Arguments>
Quorl::ErrorStatus change(ZnDbObjectId id, Change&& change, Arguments&&... arguments) {
  ZnDbHolder<Object> object;
  const Quorl::ErrorStatus status = object.openForWrite(id);
  return status == Quorl::eOk
             ? std::invoke(std::forward<Change>(change), *object, std::forward<Arguments>(arguments)...)
             : status;
}

} // namespace torvi
