#pragma once

#include <string>

namespace consolidator {

/// Plain counterpart of ConditionPreparer for tests: streams of words and two stacks of texts,
/// every reduction joining texts. Takes quadratic time.
std::string prepareWithTwoStacks(const std::string& condition);

}  // namespace consolidator
