# Completion of consolidator-inspect(1) for fish. Consolidated files stand before all others.

# Whether one of these commands is on the command line.
function __consolidator_inspect_is
    __fish_seen_subcommand_from $argv
end

# Whether the next operand of a command is the one of this number.
function __consolidator_inspect_next -a command number
    set -l words (commandline -opc)
    test "$words[2]" = $command; or return 1
    set -l count 1
    for i in (seq 3 (count $words))
        string match -q -- '-*' $words[$i]; and continue
        contains -- $words[(math $i - 1)] -o --output --source; or set count (math $count + 1)
    end
    test $count = $number
end

# Completes the tool's own command line, which follows "--".
function __consolidator_inspect_tool
    set -l words (commandline -opc)
    set -l dashes (contains -i -- -- $words); or return 1
    set -e words[1..$dashes]
    complete -C "consolidator "(string join -- ' ' (string escape -- $words) (commandline -ct))
end

set -l commands show json extract find verify diff coverage explain run report sql
complete -c consolidator-inspect -f
complete -c consolidator-inspect -n __fish_use_subcommand -a show -d 'Show what is in a file'
complete -c consolidator-inspect -n __fish_use_subcommand -a json -d 'Write what is in a file as strict JSON'
complete -c consolidator-inspect -n __fish_use_subcommand -a extract -d 'Write the bytes of one section'
complete -c consolidator-inspect -n __fish_use_subcommand -a find -d 'Find a variable, register, kernel or location'
complete -c consolidator-inspect -n __fish_use_subcommand -a verify -d 'Check whether files are sound'
complete -c consolidator-inspect -n __fish_use_subcommand -a diff -d 'Tell how two files differ'
complete -c consolidator-inspect -n __fish_use_subcommand -a coverage -d 'Tell what of a file can be debugged'
complete -c consolidator-inspect -n __fish_use_subcommand -a explain -d 'Tell what a run of consolidator would do'
complete -c consolidator-inspect -n __fish_use_subcommand -a run -d 'Run consolidator so that nothing is lost'
complete -c consolidator-inspect -n __fish_use_subcommand -a report -d 'Write a page that shows what is in a file'
complete -c consolidator-inspect -n __fish_use_subcommand -a sql -d 'Write what is in files as an SQLite database'
complete -c consolidator-inspect -n __fish_use_subcommand -l version -d 'Show the version'
complete -c consolidator-inspect -l help -d 'Show the options'
complete -c consolidator-inspect -n "__consolidator_inspect_is $commands; and not __consolidator_inspect_next extract 2; and not __consolidator_inspect_next find 2" -k -a '(__fish_complete_suffix .consolidated)'
complete -c consolidator-inspect -n '__consolidator_inspect_next extract 2' -a 'project dwarf json records'
complete -c consolidator-inspect -n '__consolidator_inspect_is show' -l kernel -x -d 'Show a kernel of this name in full'
complete -c consolidator-inspect -n '__consolidator_inspect_is json' -l pretty -d 'One value per line'
complete -c consolidator-inspect -n '__consolidator_inspect_is find verify diff coverage explain run' -l format -x -a 'text json' -d 'For people or for programs'
complete -c consolidator-inspect -n '__consolidator_inspect_is extract sql' -s o -l output -r -F -d 'Where to write'
complete -c consolidator-inspect -n '__consolidator_inspect_is verify' -l notes -d 'List notes, too'
complete -c consolidator-inspect -n '__consolidator_inspect_is verify' -l all -d 'List all findings'
complete -c consolidator-inspect -n '__consolidator_inspect_is verify' -l strict -d 'Count warnings as errors'
complete -c consolidator-inspect -n '__consolidator_inspect_is verify' -l require -x -a 'kernels instances dwarf locations project=' -d 'What must not be missing'
complete -c consolidator-inspect -n '__consolidator_inspect_is verify run' -l quiet -d 'Print nothing'
complete -c consolidator-inspect -n '__consolidator_inspect_is diff' -l exact -d 'Compare the texts of conditions'
complete -c consolidator-inspect -n '__consolidator_inspect_is diff' -l sections -d 'Compare the sections, too'
complete -c consolidator-inspect -n '__consolidator_inspect_is diff' -l stat -d 'Write the summary alone'
complete -c consolidator-inspect -n '__consolidator_inspect_is coverage' -l fail-under -x -a 'arguments= variables=' -d 'Percentage that must have locations'
complete -c consolidator-inspect -n '__consolidator_inspect_is coverage' -l baseline -r -F -d 'File that had all locations'
complete -c consolidator-inspect -n '__consolidator_inspect_is explain' -l strict -d 'Status 1 for what is lost'
complete -c consolidator-inspect -n '__consolidator_inspect_is run' -l allow -x -a 'skipped refused damaged dwarf-differs locations-differ condition-decays condition-removed duplicate-condition dump-empty' -d 'What does not end the run'
complete -c consolidator-inspect -n '__consolidator_inspect_is run' -l keep-if-equal -d 'Leave an equal file alone'
complete -c consolidator-inspect -n '__consolidator_inspect_is explain run' -a '(__consolidator_inspect_tool)'
complete -c consolidator-inspect -n '__consolidator_inspect_is report' -s o -l output -r -F -d 'Where to write the page'
complete -c consolidator-inspect -n '__consolidator_inspect_is report' -l source -x -a '(__fish_complete_directories)' -d 'Show conditions beside the source below a folder'
complete -c consolidator-inspect -n '__consolidator_inspect_is sql' -l append -d 'Add to a database that is there'
