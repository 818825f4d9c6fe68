# Prints what zsh offers for a command line: complete.zsh FOLDER LINE, FOLDER that of completions. A
# shell in a terminal of its own is asked, because the completion answers nobody else.
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "fpath=($1 \$fpath); autoload -U compinit; compinit -u -D; bindkey '^I' complete-word"
sleep 1
zpty -w -n shell "$2"$'\t'
sleep 1
told=
while zpty -r -t shell part; do told+=$part; done
print -r -- "$told"
zpty -d shell
