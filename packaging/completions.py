#!/usr/bin/env python3
"""Writes the bash and zsh completions of a program from its own --help.

Usage: completions.py PROGRAM NAME BASH_FILE ZSH_FILE

PROGRAM is the built program, NAME the name it is installed under. Each command's --help is read
in turn (the command line's commands and their subcommands; the desktop program has options
only), so the completions offer exactly the commands and options the program accepts.
"""

import os
import re
import subprocess
import sys

SECTION = re.compile(r"^(Options|Positionals|Subcommands|Arguments):\s*$")


def help_text(program, command):
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    return subprocess.run([program, *command, "--help"], capture_output=True, text=True,
                          env=env, check=True).stdout


def read_help(text):
    """The options (name -> takes a value), subcommands and positional choices in a help text."""
    options, subcommands, choices = {}, [], []
    section = "Options"
    for line in text.splitlines():
        heading = SECTION.match(line)
        if heading:
            section = heading.group(1)
            continue
        if not line.startswith(" ") or not line.strip():
            continue
        # The name column ends where two spaces start the description.
        column = re.sub(r",\s+", ",", re.split(r"\s{2,}", line.strip())[0])
        if section == "Options" and column.startswith("-"):
            names, _, rest = column.partition(" ")
            for name in re.split(r",\s*", names):
                if name.startswith("-"):
                    options[name] = bool(rest) and not rest.startswith(("Excludes", "Needs"))
        elif section == "Subcommands":
            subcommands.append(column.split()[0])
        elif section == "Positionals":
            listed = re.search(r"\{([^}]*)\}", column)
            if listed:
                choices += [c.strip() for c in listed.group(1).split(",")]
    return options, subcommands, choices


def walk(program, command=()):
    """Every command path with what its help lists, the program itself first."""
    options, subcommands, choices = read_help(help_text(program, list(command)))
    found = [(" ".join(command), options, subcommands, choices)]  # "" for the program
    for sub in subcommands:
        found += walk(program, (*command, sub))
    return found


def key(name, path):
    """A command's key in the tables: the program's name, then the command's words."""
    return f"{name} {path}".strip()


def tables(name, commands, entry):
    """The two tables of the completion functions, one entry a command: the words that may
    follow it (its subcommands, or the choices of its argument), and its options."""
    names = [entry(key(name, path), " ".join(subs + choices)) for path, _, subs, choices in commands]
    options = [entry(key(name, path), " ".join(sorted(opts))) for path, opts, _, _ in commands]
    return names, options


def word_walk(valued, first, end, word):
    """The opening of the loop both shells run over the words typed before the cursor: the
    options that take a value, and the step over such an option's value."""
    return [f"  local valued=' {' '.join(sorted(valued))} '",
            f"  for ((i = {first}; i < {end}; i++)); do",
            f"    word={word}",
            "    if [[ $valued == *\" $word \"* ]]; then ((i++)); continue; fi"]


def offers(previous, typed, files, options, names):
    """What both shells offer at the cursor: files after an option that takes a value, the
    command's options for a word that starts with "-", otherwise what may follow the command."""
    return [f"  if [[ $valued == *\" {previous} \"* ]]; then", f"    {files}",
            f"  elif [[ {typed} == -* ]]; then", f"    {options}",
            "  else", f"    {names}",
            "  fi"]


def bash(name, commands, valued):
    fn = "_" + re.sub(r"\W", "_", name)
    lines = [f"# bash completion for {name}, made from its --help", f"{fn}() {{",
             "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}",
             f"  local cmd={name} word i",
             "  local -A names=("]
    names, options = tables(name, commands, lambda k, v: f"    [{k!r}]={v!r}")
    lines += names + ["  )", "  local -A options=("] + options
    lines += ["  )"] + word_walk(valued, "1", "COMP_CWORD", "${COMP_WORDS[i]}")
    lines += ["    if [[ -n ${names[$cmd $word]+x} ]]; then",
              "      cmd=\"$cmd $word\"",
              "    fi",
              "  done"]
    lines += offers("$prev", "$cur", "COMPREPLY=($(compgen -f -- \"$cur\"))",
                    "COMPREPLY=($(compgen -W \"${options[$cmd]}\" -- \"$cur\"))",
                    "COMPREPLY=($(compgen -W \"${names[$cmd]}\" -- \"$cur\"))")
    lines += ["}",
              f"complete -o default -F {fn} {name}",
              ""]
    return "\n".join(lines)


def zsh(name, commands, valued):
    fn = "_" + re.sub(r"\W", "_", name)
    lines = [f"#compdef {name}", f"# zsh completion for {name}, made from its --help", "",
             f"{fn}() {{",
             f"  local cmd={name} word i",
             "  local -A names options",
             "  names=("]
    names, options = tables(name, commands, lambda k, v: f"    {k!r} {v!r}")
    lines += names + ["  )", "  options=("] + options
    lines += ["  )"] + word_walk(valued, "2", "CURRENT", "${words[i]}")
    lines += ["    if (( ${+names[$cmd $word]} )); then cmd=\"$cmd $word\"; fi",
              "  done"]
    lines += offers("${words[CURRENT-1]}", "$PREFIX", "_files", "compadd -- ${=options[$cmd]}",
                    "compadd -- ${=names[$cmd]} || _files")
    lines += ["}",
              "",
              f"{fn} \"$@\"",
              ""]
    return "\n".join(lines)


def main():
    program, name, bash_file, zsh_file = sys.argv[1:]
    commands = walk(program)
    valued = {o for _, options, _, _ in commands for o, takes in options.items() if takes}
    with open(bash_file, "w") as out:
        out.write(bash(name, commands, valued))
    with open(zsh_file, "w") as out:
        out.write(zsh(name, commands, valued))


if __name__ == "__main__":
    main()
