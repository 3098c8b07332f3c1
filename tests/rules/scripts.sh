#!/usr/bin/env bash
# Checks that the scripts for both systems use nothing that macOS lacks: its bash is 3.2, its tools are those of BSD.
# Prints each violation.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit

# Scripts that run on Linux only, and this one, which names what it forbids.
except='setup/linux.sh tests/packaging/debian_test.sh tests/rules/tidy.sh tests/ui/program_test.sh bench/startup'
except+=' tests/rules/scripts.sh'

# code: prints the lines of the scripts as file:line:text, without comments.
code() {
    find run test .ci setup tests bench tools packaging -type f -exec grep -lE '^#!.*sh$|^# shellcheck shell=' {} + |
        while read -r script; do
            [[ " $except " == *" $script "* ]] || grep -Hn '' "$script"
        done | sed -E 's/(:|[[:space:]])#.*/\1/'
}

# Added to bash after 3.2. An empty array counts as unset there, so with `set -u` its expansion ends the script.
bash='\b(mapfile|readarray|coproc)\b|\b(declare|local|typeset|readonly)\s+-\w*[Agn]|\bwait\s+-n|\[\s+(!\s+)?-v\s'
bash+='|\$\{!?\w+(\[[^]]*\])?([,^]|@[A-Za-z]\})|\$\{\w+\[-|\|&|&>>|;;?&|\{\w+\}[<>]|=\(\)|\bread\b.*\s-t\s*[0-9]*\.'
bash+='|\bshopt\b.*\b(globstar|lastpipe|inherit_errexit)\b|\$\{?(BASHPID|EPOCH\w+)\b|%\([^)]*\)T|=~\s+[^"$]*\('

# Tools, folders and options of Linux and GNU.
tools='(^|[^-_[:alnum:]])(nproc|tac|shuf|timeout|setsid|flock|chattr|lsattr|sha[0-9]+sum|md5sum|xwininfo|xprop)\b|(^|[ =(]|[^\]")/(proc|sys|dev/shm)\b'
tools+='|\s-(printf|quit|regextype|regex|readable|writable|executable|xtype)\b|\bstat\s+-|\b(realpath|readlink)\s+-'
tools+='|\bsed(\s+-[nE]+)*\s+-[nE]*[irsuz]|\bdate\s+-[dI]|\bmktemp\b.*\s-[pt]\b|\bxargs(\s+-\w+(\s+[0-9]+)?)*\s+-[rda]\b'
tools+='|\bgrep\b[^|]*\s-\w*P|\bhead\s+-[nc]\s*-|\bcp\s+-\w*[lu]'
tools+='|\b(cp|cut|date|du|env|find|head|id|ls|mktemp|mv|rm|sed|sort|tail|touch|tr|uniq|wc|xargs)\s+--[a-z]'

found=$(code | grep -E "$bash|$tools") || exit 0
printf 'neither bash 3.2 nor the BSD tools of macOS know:\n%s\n' "$found"
exit 1
