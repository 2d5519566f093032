#pragma once

#include <boost/program_options/options_description.hpp>
#include <boost/program_options/parsers.hpp>

#include <span>

namespace consolidator {

/// The words of a command line, without the program's name.
using CommandLineWords = std::span<const char* const>;

/// Finds the options in the words, as Boost.Program_options does in its default style and without
/// positional options. The library's own parser erases each word from the front of the others, and
/// each letter of a word likewise, which takes n² steps; this one takes n. The library is asked
/// what a name means and, for the first word that is wrong, what there is to say about it.
///
/// Each of the known options takes one value or none. The result is to be stored in a variables
/// map: it holds no tokens, and at most two occurrences of a switch, which may be given once.
/// Throws the `boost::program_options::error` that the library throws.
boost::program_options::parsed_options parseWords(
    const boost::program_options::options_description& known, CommandLineWords words);

}  // namespace consolidator
