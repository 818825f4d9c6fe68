# Completion of quillmoor's command line in bash: one file.
complete -o filenames -A file quillmoor
