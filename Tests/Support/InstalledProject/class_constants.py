#!/usr/bin/env python3
"""Writes a program that takes the address of every public constant of the classes in a folder of headers, so that one
which a library keeps to itself does not link: class_constants.py PROGRAM.cpp FOLDER..."""
import pathlib
import re
import sys

# What opens a scope, closes one, changes the access, or declares a static member.
TOKEN = re.compile(
    r"(?P<template>\btemplate\s*<)"
    r"|\b(?P<access>public|protected|private)\s*:(?!:)"
    r"|\b(?P<kind>class|struct|namespace|union|enum)\b(?P<head>[^;{}()]*)\{"
    r"|(?<![\w:])(?:inline\s+)?static\b(?!_)(?P<member>[^;{}()=]*)(?P<after>[;{(=])"
    r"|(?P<brace>[{}])|;")


def plain(source):
    """The source without comments, texts, attributes and directives."""
    source = re.sub(r"//[^\n]*|/\*.*?\*/", " ", source, flags=re.S)
    source = re.sub(r"^\s*#.*(?:\\\n.*)*", " ", source, flags=re.M)
    return re.sub(r"\"(?:\\.|[^\"\\])*\"|'(?:\\.|[^'\\])'", '""', source)


def constants(source):
    """(qualified name, whether a user may name it) of each static data member; not those of templates."""
    scopes = []  # (kind, name, access, of a template); code has an empty kind
    of_template = False
    position = 0
    source = plain(source)
    while token := TOKEN.search(source, position):
        position = token.end()
        if token["template"]:
            of_template = True
        elif token["access"]:
            kind, name, _, template = scopes[-1]
            scopes[-1] = (kind, name, token["access"], template)
        elif token["kind"]:
            names = re.findall(r"[A-Za-z_]\w*", token["head"].split(" :")[0].replace("final", ""))
            access = "private" if token["kind"] == "class" else "public"
            scopes.append((token["kind"], names[-1] if names else "", access, of_template))
            of_template = False
        elif token["member"] is not None:
            inside = scopes and scopes[-1][0] in ("class", "struct")
            if inside and token["after"] != "(" and not any(template for *_, template in scopes) and not of_template:
                name = re.findall(r"\w+", token["member"])[-1]
                seen = all(access == "public" for kind, _, access, _ in scopes if kind != "namespace")
                yield "::".join([scope[1] for scope in scopes if scope[1]] + [name]), seen
            if token["after"] == "{":
                scopes.append(("", "", "public", False))
            of_template = False
        elif token["brace"] == "{":
            scopes.append(("", "", "public", False))
            of_template = False
        elif token["brace"]:
            scopes.pop()
        else:
            of_template = False
    if scopes:
        raise SystemExit(f"class_constants.py: braces that do not match: {scopes}")


def main():
    program, *folders = map(pathlib.Path, sys.argv[1:])
    includes, uses = [], []
    for folder in folders:
        for header in sorted(folder.rglob("*.h")):
            seen = [name for name, public in constants(header.read_text()) if public]
            if seen:
                includes.append(f"#include <{header.relative_to(folder)}>\n")
                uses += [f"    take({name});\n" for name in seen]
    if not uses:
        raise SystemExit("class_constants.py: the headers have no constants")
    program.write_text("".join(includes) + """
#include <cstdio>

static unsigned int taken;
template <typename Constant>
static void take(const Constant& constant) {
    const volatile void* volatile address = &constant;
    taken += address != nullptr ? 1 : 0;
}

int main() {
""" + "".join(uses) + """    std::printf("%u class constants are there.\\n", taken);
}
""")


main()
