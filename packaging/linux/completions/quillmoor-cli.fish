# Completion of quillmoor-cli's command line in fish.

# A line for each command.
complete -c quillmoor-cli -n __fish_use_subcommand -f -a list -d 'Print the tree of resources, as the window shows it'
complete -c quillmoor-cli -n __fish_use_subcommand -f -a icon -d 'Save the program\'s icon as ICO, or one PNG'
complete -c quillmoor-cli -n __fish_use_subcommand -f -a save -d 'Save resources as BMP, ICO, TXT, WAV and BIN'
complete -c quillmoor-cli -n __fish_use_subcommand -f -a strings -d 'Print the texts of string tables and message tables'
complete -c quillmoor-cli -n __fish_use_subcommand -f -a page -d 'Write one HTML page of everything, to read'
complete -c quillmoor-cli -n __fish_use_subcommand -f -l version -d 'Tell the version'
complete -c quillmoor-cli -f -s h -l help -d 'Tell the options'

# A line for each option, with the commands that have it.
complete -c quillmoor-cli -n '__fish_seen_subcommand_from list strings' -l json -d 'One JSON object a line'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from list save' -l all -d 'Every resource, of any kind and language'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from list save' -l salvage -d 'Keep what could be read of a damaged file'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from save' -s o -l output -x -a '(__fish_complete_directories)' -d 'Save to this folder'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from save' -l category -x -a 'bitmap icon string binary' -d 'Save only this kind'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from icon' -l size -x -a '16 32 48 128 256' -d 'Save the best picture as PNG'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from icon' -s f -l force -d 'Replace files that are there already'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from strings' -l language -x -d 'Print only this language'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from list save strings' -l code-page -x -d 'Code page of what is not UTF-16'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from save' -s f -l force -d 'Replace files that are there already'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from save' -l name -x -d 'Save only what has this name'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from save' -l utf8 -d 'Save string tables as UTF-8'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from page' -s o -l output -r -F -d 'Write to this file'
complete -c quillmoor-cli -n '__fish_seen_subcommand_from page' -s f -l force -d 'Replace a file that is there already'
