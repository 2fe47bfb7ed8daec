#!/usr/bin/env python3
"""make_files.py QUILLET VERSION FOLDER: manual pages, completions and the changelog of the packages.

The list of commands and options is what `quillet --help` tells; quillet-script(5) is docs/script.md."""
import email.utils
import gzip
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Command:
    """A sub-command by its help text."""

    def __init__(self, program, name):
        text = subprocess.run([program, name, "--help"], check=True, capture_output=True, text=True).stdout
        self.name = name
        self.summary = text.splitlines()[0]
        self.positionals = self.section(text, "Positionals")
        self.options = self.section(text, "Options")
        found = re.search(r"^Exit status: .*$", text, re.M)
        self.status = found[0] if found else ""
        found = re.search(r"^Example: (.*)$", text, re.M)
        self.example = found[1] if found else ""

    @staticmethod
    def section(text, head):
        """[(words, description)]"""
        found = re.search(rf"^{head}:\n(.*?)(?:\n\n|\Z)", text, re.S | re.M)
        entries = []
        for line in found[1].splitlines() if found else ():
            words, _, description = line.strip().partition("  ")
            if line.startswith("    "):  # goes on below a long name
                entries[-1] = (entries[-1][0], (entries[-1][1] + " " + line.strip()).strip())
            else:
                entries.append((words, description.strip()))
        return entries

    def flags(self):
        return [flag for words, _ in self.options for flag in Option(words).flags]


class Option:
    """An option by the words in front of its description: "--keep Needs: --backup", "--rows INT:NONNEGATIVE=5"."""

    def __init__(self, words):
        names, *self.notes = re.split(r" (?=(?:Needs|Excludes): )", words)
        names, _, value = names.partition(" ")
        self.flags = names.split(",")
        self.value = "N" if value.startswith("INT") else value
        self.default = value.partition("=")[2]

    def described(self, description):
        return " ".join([description] + [f"({note})" for note in self.notes + [f"Default: {self.default}"] * bool(self.default)])


def commands(program):
    text = subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout
    return [Command(program, name) for name, _ in Command.section(text, "Subcommands")]


def roff(text):
    return text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")


def guarded(text):
    return "\\&" + text if text[:1] in ".'" else text


def inline(text):
    """Markdown within a line."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", text)
    parts = re.split(r"`+([^`]*)`+", text)
    return guarded("".join(f"\\fB{roff(p)}\\fR" if i % 2 else roff(p).replace("**", "") for i, p in enumerate(parts)))


def command_page(list_of, version):
    out = [f'.TH QUILLET 1 "" "quillet {version}" "User Commands"', ".SH NAME",
           "quillet \\- moves data between spreadsheets and models", ".SH SYNOPSIS"]
    for command in list_of:
        words = " ".join(("\\fI{}\\fR" if words.endswith(" REQUIRED") else "[\\fI{}\\fR]").format(roff(words.split()[0]))
                         for words, _ in command.positionals)
        out += [f".B quillet {roff(command.name)}", f"[\\fIoptions\\fR] {words}", ".br"]
    out += [".SH COMMANDS"]
    for command in list_of:
        out += [f".SS {roff(command.name)}", guarded(roff(command.summary)) + "."]
        for words, description in command.positionals:
            out += [".TP", f".I {roff(words.split()[0])}", guarded(roff(description))]
        for words, description in command.options:
            option = Option(words)
            value = f" \\fI{roff(option.value)}\\fR" if option.value else ""
            out += [".TP", f"\\fB{roff(', '.join(option.flags))}\\fR{value}", guarded(roff(option.described(description)))]
        if command.status:
            out += [".PP", guarded(roff(command.status)) + "."]
        if command.example:
            out += [".PP", "Example:", ".PP", ".nf", ".RS", guarded(roff(command.example)), ".RE", ".fi"]
    out += [".SH SEE ALSO", ".BR quillet\\-script (5),", "and the pages in /usr/share/doc/quillet"]
    return "\n".join(out) + "\n"


def script_page(version):
    out = [f'.TH QUILLET-SCRIPT 5 "" "quillet {version}" "File Formats"', ".SH NAME",
           "quillet\\-script \\- scripts for quillet run"]
    text = (ROOT / "docs/script.md").read_text().split("\n", 1)[1]
    for block in re.split(r"\n\s*\n", text.strip("\n")):
        lines = block.splitlines()
        if lines[0].startswith("#"):
            out.append(".SH " + roff(lines[0].lstrip("# ").upper()))
            lines = lines[1:]
        if not lines:
            continue
        if all(line.startswith("    ") for line in lines):
            out += [".PP", ".nf", ".RS"] + [guarded(roff(line[4:])) for line in lines] + [".RE", ".fi"]
        elif lines[0].startswith("|"):
            for line in lines[2:]:
                cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", line.strip())[1:-1]]
                out += [".TP", inline(cells[0]), inline("; ".join(cells[1:]))]
        elif lines[0].startswith("- "):
            for item in re.split(r"\n- ", block[2:]):
                out += [".IP \\(bu 2", inline(" ".join(item.split()))]
        else:
            out += [".PP"] + [inline(line) for line in lines]
    out += [".SH SEE ALSO", ".BR quillet (1)"]
    return "\n".join(out) + "\n"


def bash_completion(list_of):
    cases = "".join(f"        {c.name}) words='{' '.join(c.flags())}' ;;\n" for c in list_of)
    names = " ".join(c.name for c in list_of)
    return f"""# Completion of quillet for bash.
_quillet() {{
    local word=${{COMP_WORDS[COMP_CWORD]}} words=''
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W '{names} --help --version' -- "$word"))
        return
    fi
    case ${{COMP_WORDS[1]}} in
{cases}    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$words" -- "$word"))
    else
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}}
complete -o filenames -F _quillet quillet
"""


def zsh_text(text):
    return text.replace("'", "").replace("[", "(").replace("]", ")").replace(":", ";")


def zsh_completion(list_of):
    names = " ".join(f"'{c.name}:{zsh_text(c.summary)}'" for c in list_of)
    cases = ""
    for command in list_of:
        specs = []
        for words, description in command.options:
            option = Option(words)
            value = {"": "", "FILE": ":file:_files"}.get(option.value, ":" + option.value)
            specs += [f"'{flag}[{zsh_text(description)}]{value}'" for flag in option.flags if flag.startswith("--")]
        cases += f"        {command.name}) _arguments {' '.join(specs)} '*:file:_files' ;;\n"
    return f"""#compdef quillet
# Completion of quillet for zsh.
_quillet() {{
    local -a commands=({names})
    if (( CURRENT == 2 )); then
        _describe 'command' commands
        return
    fi
    local name=${{words[2]}}
    shift words
    (( CURRENT-- ))
    case $name in
{cases}    esac
}}
_quillet "$@"
"""


def package_changelog(version):
    """In the form of Debian's changelogs; what changed is told in CHANGELOG.md, which comes along."""
    epoch = os.environ.get("SOURCE_DATE_EPOCH") or int((ROOT / "CHANGELOG.md").stat().st_mtime)
    date = email.utils.formatdate(int(epoch)).replace("-0000", "+0000")
    return (f"quillet ({version}) unstable; urgency=medium\n\n  * See CHANGELOG.md.\n\n"
            f" -- Quillet maintainers <maintainers@quillet.example.org>  {date}\n")


def main():
    program, version, folder = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    folder.mkdir(parents=True, exist_ok=True)
    list_of = commands(program)

    def compressed(name, text):
        (folder / name).write_bytes(gzip.compress(text.encode(), 9, mtime=0))

    compressed("quillet.1.gz", command_page(list_of, version))
    compressed("quillet-script.5.gz", script_page(version))
    compressed("changelog.gz", package_changelog(version))
    (folder / "quillet.bash").write_text(bash_completion(list_of))
    (folder / "_quillet").write_text(zsh_completion(list_of))


if __name__ == "__main__":
    main()
