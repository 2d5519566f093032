#pragma once

#include "lmx60/KnownElementsSelector.h"
#include "lmx60/UnmarshalHelper.h"
#include "lmx60/XmlReader.h"

#include <string>
#include <string_view>

namespace lmx {

/// Writes down what it is handed, as one line of text. By their first letters it takes elements "t"
/// (attributes only), enters elements "e" (with what they hold), "v" (for their text) and "n" (as
/// one without children), and knows no others.
class RecordingSelector final : public c_known_elements_selector {
 public:
  explicit RecordingSelector(std::string& log) : log_(log) {}

  element_event select(c_xml_reader& /*reader*/, std::string_view name,
                       const c_attributes& attributes) override {
    entered_ = name.front();
    const element_event event = eventFor(entered_);
    if (event == element_event::unknown) return event;
    log_.append(name);
    attributes.for_each([this](std::string_view attribute, std::string_view value) {
      log_.append(" ").append(attribute).append("='").append(value).append("'");
    });
    log_ += event == element_event::taken ? "; " : " ";
    return event;
  }

  void unmarshal_content(c_xml_reader& reader) override {
    if (entered_ == 'v') {
      log_ += '"' + reader.get_element_value() + "\"; ";
    } else if (entered_ == 'n') {
      c_unmarshal_helper(reader).unmarshal_empty_content();
      log_ += "{}; ";
    } else {
      log_ += "{ ";
      RecordingSelector inner(log_);
      c_unmarshal_helper(reader).unmarshal_complex_content(inner);
      log_ += "}; ";
    }
  }

 private:
  static element_event eventFor(char letter) {
    switch (letter) {
      case 't':
        return element_event::taken;
      case 'e':
      case 'v':
      case 'n':
        return element_event::entered;
      default:
        return element_event::unknown;
    }
  }

  std::string& log_;
  char entered_ = 0;
};

}  // namespace lmx
