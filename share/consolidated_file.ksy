meta:
  id: consolidated_file
  title: Consolidated debug metadata
  file-extension: consolidated
  ks-version: 0.9
  endian: le
doc: |
  The debug metadata of one build of a programmable-logic accelerator, as consolidator gathers it
  from the files that the stages of the build leave: a header, a table of sections, and the
  sections. The table tells where each section is. consolidator writes the sections after the
  table, in its order and without gaps, and the file ends with the last one.

  All numbers are little-endian. Nothing is aligned. The tool takes positions as signed 32-bit
  numbers, so a section starts below 2 GiB.

  Where the source of consolidator spells a name in another way, -orig-id gives that name.
doc-ref: consolidated-file-format.md, consolidated-file(5)
seq:
  - id: header
    -orig-id: FileHeader
    type: file_header
  - id: section_table
    type: section_entry
    repeat: expr
    repeat-expr: header.section_count

types:
  file_header:
    seq:
      - id: magic
        contents: [0xd4, 0xda, 0xef, 0xbe]
      - id: major_version
        -orig-id: majorVersion
        type: s4
        doc: 1 in every new file. The tool refuses greater numbers.
      - id: minor_version
        -orig-id: minorVersion
        type: s4
        doc: 1 in every new file. The tool accepts any number.
      - id: section_count
        -orig-id: sectionCount
        type: u4

  section_entry:
    -orig-id: SectionEntry
    doc: |
      Where a section is and what it holds. A kind may occur more than once: each run that names
      the project adds one more project_name, and all of them hold the same.
    seq:
      - id: kind
        type: u4
        enum: section_kind
        doc: An entry with another number ends the tool's reading.
      - id: padding1
        size: 4
        doc: Written as zeros, without meaning.
      - id: offset
        type: u8
        doc: From the start of the file, in bytes.
      - id: size
        type: u4
        doc: In bytes. 0xffffffff stands for 0xfffffffe, here and in every length of a text.
      - id: padding2
        size: 4
        doc: Written as zeros, without meaning.
    instances:
      content:
        io: _root._io
        pos: offset
        size: size
        type:
          switch-on: kind
          cases:
            'section_kind::project_name': project_name
            'section_kind::dwarf': dwarf
            'section_kind::kernel_records': kernel_records
            'section_kind::json': json

  project_name:
    seq:
      - id: name
        size-eos: true
        terminator: 0
        doc: Written without a terminator; it ends at the first zero byte all the same.

  dwarf:
    seq:
      - id: content
        size-eos: true
        doc: The DWARF file, byte for byte.

  json:
    doc: |
      The kernels once more, as text; rendered again whenever the file is written. Empty where the
      section found no place below 2 GiB.
    seq:
      - id: document
        size: _io.size - 1
        if: _io.size != 0
        doc: |
          Not strict JSON: the location of a bit in a variable is written as { 1, 2}, and texts are
          not escaped.
      - id: terminator
        contents: [0x00]
        if: _io.size != 0

  kernel_records:
    doc: Empty, without a count, where the section found no place below 2 GiB.
    seq:
      - id: kernel_count
        type: u4
        if: _io.size != 0
      - id: kernels
        type: kernel_record
        repeat: expr
        repeat-expr: kernel_count
        if: _io.size != 0

  kernel_record:
    -orig-id: KernelRecord
    doc: All that is known of one kernel. The lists keep the order in which their items were added.
    seq:
      - id: name
        type: text
      - id: instance_paths
        -orig-id: instancePaths
        type: text_list
        doc: |
          Where its instances are in the hierarchy. The JSON document adds "/inst" to each, or
          "/U0" if the type of an argument holds "float" or "double".
      - id: type
        type: u4
        enum: kernel_type
        doc: Other numbers are kept; the JSON document has "Unknown" for them.
      - id: arguments
        type: variable_list
      - id: variables
        type: variable_list
      - id: hardware_variables
        -orig-id: hardwareVariables
        type: hardware_variable_list
      - id: breakable_conditions
        -orig-id: breakableConditions
        type: breakable_condition_list
      - id: brams
        type: text_list

  text:
    doc: A length and the bytes. They are in the encoding of the input that they came from.
    seq:
      - id: length
        type: u4
      - id: bytes
        size: length
        terminator: 0
        doc: Ends at its first zero byte; the rest is ignored.
    instances:
      utf8:
        value: bytes.to_s("UTF-8")

  text_list:
    seq:
      - id: count
        type: u4
      - id: items
        type: text
        repeat: expr
        repeat-expr: count

  variable_list:
    seq:
      - id: count
        type: u4
      - id: items
        type: variable_record
        repeat: expr
        repeat-expr: count

  variable_record:
    -orig-id: VariableRecord
    seq:
      - id: name
        type: text
        doc: The name in the source.
      - id: second
        type: text
        doc: The name in the hardware.
      - id: c_type
        -orig-id: cType
        type: text
        doc: |
          The type as written in the source. The JSON document has a width that follows from it:
          64 bits if it holds "*", else 8 if it holds "char", else 32.
      - id: instance_count
        type: u4
      - id: instance_bits
        -orig-id: instanceBits
        type: bit_location_list
        repeat: expr
        repeat-expr: instance_count
        doc: The locations of the bits, for each instance of the kernel.

  hardware_variable_list:
    seq:
      - id: count
        type: u4
      - id: items
        type: hardware_variable
        repeat: expr
        repeat-expr: count

  hardware_variable:
    -orig-id: HardwareVariable
    doc: A register or signal of the hardware.
    seq:
      - id: rtl_name
        -orig-id: rtlName
        type: text
      - id: logic_locations
        -orig-id: logicLocations
        type: bit_location_list
        doc: The locations of its bits; 0 and 0 for a bit whose location is not known.

  bit_location_list:
    doc: One location for each bit, in the order of the bits.
    seq:
      - id: count
        type: u4
      - id: items
        type: bit_location
        repeat: expr
        repeat-expr: count

  bit_location:
    -orig-id: BitLocation
    doc: The location of a bit in the device, as in the logic-location file.
    seq:
      - id: first
        type: u4
        doc: The third field of the line of the bit.
      - id: second
        type: u4
        doc: The fourth field.

  breakable_condition_list:
    seq:
      - id: count
        type: u4
      - id: items
        type: breakable_condition
        repeat: expr
        repeat-expr: count

  breakable_condition:
    -orig-id: BreakableCondition
    doc: A condition on which a debugger can stop the kernel.
    seq:
      - id: kind
        type: u4
        enum: condition_kind
        doc: Other numbers are kept; the JSON document has an error for them.
      - id: condition
        type: text
        doc: |
          The operator first, "$i/" in front of names in the hardware. Each run that writes the
          file swaps the operands.
      - id: line
        type: u4
        if: kind == condition_kind::source_line
      - id: file
        type: text
        if: kind == condition_kind::source_line

enums:
  section_kind:
    0:
      id: project_name
      -orig-id: ProjectName
    1:
      id: dwarf
      -orig-id: Dwarf
    2:
      id: kernel_records
      -orig-id: KernelRecords
    3:
      id: json
      -orig-id: Json
  kernel_type:
    0:
      id: opencl
      -orig-id: OpenCL
    1:
      id: c
      -orig-id: C
    2:
      id: rtl
      -orig-id: RTL
    3:
      id: unknown
      -orig-id: Unknown
    4:
      id: hls
      -orig-id: HLS
  condition_kind:
    0:
      id: start
      -orig-id: Start
    1:
      id: stop
      -orig-id: Stop
    2:
      id: source_line
      -orig-id: SourceLine
