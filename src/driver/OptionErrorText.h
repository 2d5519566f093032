#pragma once

#include <boost/program_options/errors.hpp>

#include <string>

namespace consolidator {

/// The text of an error in the options of a command line: that of the library, where it has one.
///
/// The library puts what stands on the command line into a message and then looks through all of it
/// for placeholders, so that a word which names one, "--%canonical_option%", can keep it replacing
/// for ever. Such a word stands in the text as it is. The error is changed by the call.
std::string optionErrorText(boost::program_options::error_with_option_name& error);

}  // namespace consolidator
