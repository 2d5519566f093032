#include "lmx60/UnmarshalHelper.h"

#include "lmx60/KnownElementsSelector.h"
#include "lmx60/XmlReader.h"

namespace lmx {

void c_unmarshal_helper::unmarshal_complex_content(c_known_elements_selector& selector) {
  while (reader_.get_known_element_event(selector)) reader_.unmarshal_child_element_impl(selector);
}

void c_unmarshal_helper::unmarshal_empty_content() {
  while (reader_.get_element_event()) {
  }
}

}  // namespace lmx
