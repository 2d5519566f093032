# Completion of consolidator(1) for fish. Files of the kind that an option takes stand before all
# others.

# Whether none of these options, given by letter and name, is on the command line yet.
function __consolidator_lacks
    not __fish_contains_opt $argv
end

complete -c consolidator -f
complete -c consolidator -s a -l add -n '__consolidator_lacks -s a -s c add create' -d 'Add to the file if it exists (default)'
complete -c consolidator -s c -l create -n '__consolidator_lacks -s a -s c add create' -d 'Start anew, whatever the file holds'
complete -c consolidator -s u -l dump-dwarf -r -k -a '(__fish_complete_suffix .dwarf)' -d 'Write the stored DWARF to a file'
complete -c consolidator -s j -l dump-json -r -k -a '(__fish_complete_suffix .json)' -d 'Write the stored JSON text to a file'
complete -c consolidator -s d -l DWARF -r -k -a '(__fish_complete_suffix .dwarf)' -d 'Store a DWARF file'
complete -c consolidator -l help -n '__consolidator_lacks help' -d 'Show the options'
complete -c consolidator -s h -l hierarchy -r -k -a '(__fish_complete_suffix .hierarchy)' -d 'Read hierarchy from the system linker'
complete -c consolidator -s k -l kernel -r -k -a '(__fish_complete_suffix .xml)' -d 'Read kernel XML from HLS'
complete -c consolidator -s s -l hls -r -k -a '(__fish_complete_suffix .dbg)' -d 'Read debug metadata from HLS'
complete -c consolidator -s x -l aux -r -k -a '(__fish_complete_suffix _auxiliary.xml)' -d 'Read auxiliary XML from HLS'
complete -c consolidator -s l -l ll -r -k -a '(__fish_complete_suffix .ll)' -d 'Read logic locations from bitstream generation'
complete -c consolidator -s r -l ram -r -k -a '(__fish_complete_suffix .ram)' -d 'Read a RAM utilization report'
complete -c consolidator -s f -l consolidated_file -r -k -a '(__fish_complete_suffix .consolidated)' -d 'The consolidated file'
complete -c consolidator -s p -l project -x -d 'The name of the project'
complete -c consolidator -s v -l version -n '__consolidator_lacks -s v version' -d 'Show the versions of the formats'
