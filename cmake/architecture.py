#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the house from what the build says, and checks that it is what the sources do.

Usage: architecture.py ROOMS SVG

ROOMS has a line "folder target linked-target..." for each room, written when the build is configured. Fails, with a
line for each finding, on an arrow that runs up or in a circle, on an include of a room that is not linked, and on a
link that no include uses. Otherwise writes the picture with Graphviz: the rooms by floor, each room above all that it
links, and an arrow only where no longer road says the same.
"""
import pathlib
import re
import subprocess
import sys

INCLUDE = re.compile(r'#include <([A-Za-z/]+)/[A-Za-z0-9_]+\.h>')
FORM_HEADER = re.compile(r'<header location="global">([A-Za-z/]+)/[A-Za-z0-9_]+\.h<')
FORM_TEXTS = 'platform/panels'
# The header that the build generates into a room.
GENERATED = {'product': 'platform/bytes'}


def read_rooms(path):
    """The folder of each target, and the folders that each folder links."""
    lines = [line.split() for line in path.read_text().splitlines() if line]
    folder_of = {target: folder for folder, target, *_ in lines}
    return {folder: {folder_of[link] for link in links} for folder, _, *links in lines}


def floors(rooms):
    """The floor of each room, the ground floor being 0. Raises on a circle."""
    found = {}

    def floor(room, road):
        if room in road:
            raise ValueError('circle: ' + ' -> '.join(road[road.index(room):] + (room,)))
        if room not in found:
            found[room] = max((floor(below, road + (room,)) + 1 for below in rooms[room]), default=0)
        return found[room]

    for room in rooms:
        floor(room, ())
    return found


def included(folder, rooms):
    """The rooms that the sources and the forms name; what is generated from a form looks its texts up."""
    files = [file for file in pathlib.Path(folder).iterdir() if file.suffix in ('.h', '.cpp', '.ui')]
    text = ''.join(file.read_text() for file in files)
    names = {room for pattern in (INCLUDE, FORM_HEADER) for room in pattern.findall(text)}
    if any(file.suffix == '.ui' for file in files):
        names.add(FORM_TEXTS)
    names = {GENERATED.get(name, name) for name in names}
    return {room for room in names if room in rooms and room != folder}


def reachable(rooms, start):
    seen = set()
    waiting = [start]
    while waiting:
        for below in rooms[waiting.pop()] - seen:
            seen.add(below)
            waiting.append(below)
    return seen


def differences(rooms):
    for folder, links in sorted(rooms.items()):
        names = included(folder, rooms)
        for room in sorted(names - links):
            yield f'{folder} includes {room} without linking it'
        for room in sorted(links - names):
            yield f'{folder} links {room} without including it'


def picture(rooms, floor_of):
    lines = ['digraph house {', 'rankdir=TB; ranksep=0.5; nodesep=0.25; bgcolor=white;',
             'node [shape=box, style="rounded,filled", fontname="DejaVu Sans", fontsize=11, fillcolor="#e8eef7", color="#5a6b86"];',
             'edge [color="#8894a8", arrowsize=0.6];']
    for room in sorted(rooms):
        fill = ', fillcolor="#eef4e4", color="#6f8650"' if room.startswith('platform/') else ''
        lines.append(f'"{room}" [label="{room}"{fill}];')
    for level in sorted(set(floor_of.values())):
        same = ' '.join(f'"{room}";' for room in sorted(rooms) if floor_of[room] == level)
        lines.append('{ rank=same; ' + same + ' }')
    for room, links in sorted(rooms.items()):
        for below in sorted(links):
            if not any(below in reachable(rooms, other) for other in links - {below}):
                lines.append(f'"{room}" -> "{below}";')
    return '\n'.join(lines + ['}'])


def main(rooms_file, svg_file):
    rooms = read_rooms(pathlib.Path(rooms_file))
    try:
        floor_of = floors(rooms)
    except ValueError as circle:
        sys.exit(f'architecture: {circle}')
    findings = list(differences(rooms))
    if findings:
        sys.exit('\n'.join('architecture: ' + finding for finding in findings))
    drawn = subprocess.run(['dot', '-Tsvg'], input=picture(rooms, floor_of), capture_output=True, text=True, check=True)
    pathlib.Path(svg_file).write_text(drawn.stdout)
    print(f'architecture: {len(rooms)} rooms on {max(floor_of.values()) + 1} floors, no arrow up, no circle')


if __name__ == '__main__':
    main(*sys.argv[1:])
