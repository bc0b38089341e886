#include "app/same_file.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace app {

bool isSameFile(const std::string& one, const std::string& other) {
  std::error_code error;
  if (fs::equivalent(one, other, error)) return true;
  const fs::path first = fs::weakly_canonical(one, error);
  if (error) return one == other;
  const fs::path second = fs::weakly_canonical(other, error);
  return error ? one == other : first == second;
}

bool sparesInputs(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
                  Failure& failure) {
  for (const std::string& output : outputs)
    for (const std::string& input : inputs)
      if (isSameFile(input, output))
        return failure.set(output, 0, "would be written over " + (input == output ? "the input" : input),
                           "a file that is not read");
  return true;
}

bool areApart(const std::vector<std::string>& outputs, Failure& failure) {
  for (size_t i = 0; i < outputs.size(); ++i)
    for (size_t j = 0; j < i; ++j)
      if (isSameFile(outputs[i], outputs[j]))
        return failure.set(outputs[i], 0, "two results would be written to it", "each output once");
  return true;
}

} // namespace app
