#include "inspect/command/Options.h"

#include <CLI/CLI.hpp>

namespace consolidator::inspect {

namespace {

constexpr const char* inputHelp = "The file, or \"-\" for standard input";
constexpr const char* inputsHelp = "The files, or \"-\" for standard input";

}  // namespace

DeclaredOption& DeclaredOption::required() {
  option_->required();
  return *this;
}

DeclaredOption& DeclaredOption::placeholder(const std::string& text) {
  option_->option_text(text);
  return *this;
}

DeclaredOption& DeclaredOption::among(const std::vector<std::string>& values) {
  option_->check(CLI::IsMember(values));
  return *this;
}

DeclaredOption& DeclaredOption::check(const Check& check) {
  option_->check(check, "");
  return *this;
}

DeclaredOption& DeclaredOption::separator(char character) {
  option_->delimiter(character);
  return *this;
}

Options::Options(const std::string& name, const std::string& summary)
    : app_(std::make_unique<CLI::App>(summary, name)) {}

Options::~Options() = default;

const std::string& Options::name() const { return app_->get_name(); }

void Options::flag(const std::string& name, bool& value, const std::string& help) {
  app_->add_flag(name, value, help);
}

DeclaredOption Options::flag(const std::string& name, std::string& value, const std::string& help) {
  return DeclaredOption(*app_->add_flag(name, value, help));
}

DeclaredOption Options::flag(const std::string& name, std::vector<std::string>& values,
                             const std::string& help) {
  return DeclaredOption(*app_->add_flag(name, values, help));
}

DeclaredOption Options::option(const std::string& name, std::string& value,
                               const std::string& help) {
  return DeclaredOption(*app_->add_option(name, value, help));
}

DeclaredOption Options::option(const std::string& name, std::optional<std::string>& value,
                               const std::string& help) {
  return DeclaredOption(*app_->add_option(name, value, help));
}

DeclaredOption Options::option(const std::string& name, std::vector<std::string>& values,
                               const std::string& help) {
  return DeclaredOption(*app_->add_option(name, values, help)->allow_extra_args(false));
}

void Options::input(std::string& path) { app_->add_option("FILE", path, inputHelp)->required(); }

void Options::input(std::vector<std::string>& paths) {
  app_->add_option("FILE", paths, inputsHelp)->required();
}

void Options::footer(const std::string& text) { app_->footer(text); }

void Options::rest(std::vector<std::string>& words, const std::string& otherwise) {
  app_->set_help_flag("--help", "Print this help message and exit");
  app_->allow_extras();
  app_->callback([this, &words, otherwise] {
    words = app_->remaining();
    if (words.empty() || words.front() != "--") throw CLI::ValidationError(otherwise);
    words.erase(words.begin());
  });
}

Options::Outcome Options::parse(const std::vector<std::string>& words, std::string& text) {
  try {
    app_->parse(std::vector<std::string>(words.rbegin(), words.rend()));  // last first
  } catch (const CLI::CallForHelp&) {
    text = app_->help();
    return Outcome::WantsHelp;
  } catch (const CLI::ParseError& error) {
    text = error.what();
    return Outcome::Wrong;
  }
  return Outcome::Parsed;
}

}  // namespace consolidator::inspect
