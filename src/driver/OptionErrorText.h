#pragma once

#include <boost/program_options/errors.hpp>

#include <string>

namespace consolidator {

/// The text of an error in the options of a command line: that of the library, if that has an end.
///
/// The library puts words of the command line into a message and then looks through all of it for
/// placeholders, so a word that names one, such as "--%canonical_option%", can keep it replacing
/// for ever. Such a word appears in the text unchanged. The call changes the error.
std::string optionErrorText(boost::program_options::error_with_option_name& error);

}  // namespace consolidator
