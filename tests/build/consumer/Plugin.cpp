#include "consolidated/File.h"
#include "lmx60/XmlReader.h"

// Makes the linker take the reader, and Expat with it.
lmx::c_xml_reader* openDocument(const char* name, lmx::error_code& result) {
  return new lmx::c_xml_reader(name, result);
}

// The same for the reading library.
bool isConsolidatedFile(const char* name) {
  return static_cast<bool>(consolidated::File::open(name));
}
