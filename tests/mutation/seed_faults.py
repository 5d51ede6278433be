#!/usr/bin/env python3
"""Seeds small faults into the sources, one at a time, and tells which of them the tests notice.

Works in a worktree of its own, build/mutation, at HEAD: the checkout and its builds are not touched. Run it on a quiet
machine: a test that hangs counts as noticing.
"""
import argparse
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
TREE = ROOT / 'build/mutation'
BUILD = TREE / 'build/dev'

# What is seeded (not the folders below), and the tests that are run first.
FOLDERS = {
    'module': (['CDR/CDROAM/src'], 'cdroam'),
    'library': (['openwbem/src'], 'openwbem|objectpath|datetime'),
    'platform': (['platform/zposhared/src', 'platform/osa/src', 'platform/common/src', 'platform/tools'], 'platform'),
    'http': (['cimserver/http', 'cimserver/common'], 'cimserver_http'),
    'cimom': (['cimserver/cimom', 'cimserver/provider'], 'cimom_test|provider_test'),
    'schema': (['cimserver/schema'], 'schema'),
    'cimxml': (['cimserver/cimxml'], 'cimxml|wire|xml'),
    'server': (['cimserver', 'cimserver/cim'], 'cimserver_program'),
    'transfer': (['transfer'], 'transfer'),
    'cdrctl': (['cdrctl'], 'cdrctl'),
    'simulator': (['simulator'], 'simulator'),
}
# Run last, because they are slow; the others check what a fault in a function does not change.
SLOW = 'openwbem_example|documented|exported|faults|console|cron'
NEVER = 'openwbem_headers|installed_libraries|soak'

FAULTS = [
    (r' < ', ' <= '), (r' <= ', ' < '), (r' > ', ' >= '), (r' >= ', ' > '), (r' == ', ' != '), (r' != ', ' == '),
    (r' && ', ' || '), (r' \|\| ', ' && '), (r'\breturn true;', 'return false;'), (r'\breturn false;', 'return true;'),
    (r' \+ 1\b', ' + 2'), (r' - 1\b', ' - 2'), (r'\bif \((?!constexpr|auto|const)(?=.*\) \{$)', 'if (!('),
    (r'\b\d{2,}\b', lambda found: str(int(found.group()) + 1)),
]


def seeded(line, fault, found):
    """The line with the fault in it."""
    pattern, replacement = fault
    new = replacement(found) if callable(replacement) else replacement
    rest = line[found.end():]
    if new == 'if (!(':
        rest = rest[:-len(') {')] + ')) {'
    return line[:found.start()] + new + rest


def places(line):
    """The faults that a line of code can get, with their matches."""
    if line.lstrip().startswith(('//', '#', '*')) or re.search(r'static_assert|template|\blog\w*::', line):
        return []
    code = line.split('//')[0]
    return [(fault, found) for fault in FAULTS for found in re.finditer(fault[0], line)
            if found.start() < len(code) and code[:found.start()].count('"') % 2 == 0]


def pick(folders):
    """A file, a line of it (from 0), and the line with a fault."""
    files = sorted(file for folder in folders for file in (TREE / folder).glob('*.cpp'))
    while True:
        file = random.choice(files)
        lines = file.read_text().split('\n')
        number = random.randrange(len(lines))
        if choices := places(lines[number]):
            return file, number, seeded(lines[number], *random.choice(choices))


def bounded():
    """For a program that a fault makes take all memory."""
    resource.setrlimit(resource.RLIMIT_AS, (16 << 30, 16 << 30))


def end_what_hangs():
    for process in pathlib.Path('/proc').glob('[0-9]*'):
        try:
            if os.readlink(process / 'exe').startswith(str(BUILD)):
                os.kill(int(process.name), signal.SIGKILL)
        except OSError:
            pass


def run(*command, limit=None):
    """The exit status and the output; what hangs is killed, and its status is negative."""
    settings = dict(os.environ, CDR_SKIP_CRON='1', CCACHE_BASEDIR=str(TREE), CCACHE_NOHASHDIR='1')
    with subprocess.Popen(command, cwd=TREE, env=settings, preexec_fn=bounded, start_new_session=True, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT) as process:
        try:
            output = process.communicate(timeout=limit)[0]
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            end_what_hangs()
            output = process.communicate()[0]
    return process.returncode, output


def build():
    return run('cmake', '--build', str(BUILD))[0] == 0


def noticed_by(first):
    """The tests that fail; none when the fault is missed."""
    rounds = (['-R', first, '-E', f'{SLOW}|{NEVER}'], ['-E', f'{first}|{SLOW}|{NEVER}'], ['-R', SLOW, '-E', NEVER])
    for choice in rounds:
        status, output = run('ctest', '--test-dir', str(BUILD), '-j3', '--stop-on-failure', *choice, limit=120)
        if status:
            end_what_hangs()
            return re.findall(r'- (\w+) \(', output) or ['hang']
    return []


def seed(name):
    """Seeds one fault; returns "refused" by the compiler, "noticed" or "MISSED"."""
    folders, first = FOLDERS[name]
    file, number, line = pick(folders)
    text = file.read_text()
    lines = text.split('\n')
    old, lines[number] = lines[number], line
    began = time.monotonic()
    try:
        file.write_text('\n'.join(lines))
        tests = noticed_by(first) if build() else None
    finally:
        file.write_text(text)
    result = 'refused' if tests is None else 'noticed' if tests else 'MISSED'
    print(f'{result} {time.monotonic() - began:.0f}s {name} {file.relative_to(TREE)}:{number + 1}'
          f' {",".join(tests or [])}\n    - {old.strip()}\n    + {line.strip()}', flush=True)
    return result


def main():
    parser = argparse.ArgumentParser(prog='cdr mutate', description=__doc__.split('\n', maxsplit=1)[0])
    parser.add_argument('--count', type=int, default=10, help='faults for each folder (10)')
    parser.add_argument('--seed', type=int, default=int(time.time()), help='for the same faults once more')
    parser.add_argument('folder', nargs='*', help=f'of {", ".join(FOLDERS)} (all)')
    options = parser.parse_args()
    names = options.folder or list(FOLDERS)
    if unknown := set(names) - set(FOLDERS):
        parser.error(f'unknown: {", ".join(sorted(unknown))}')
    random.seed(options.seed)
    print(f'seed {options.seed}; what is missed is listed with its line', flush=True)
    if not TREE.exists():
        subprocess.run(['git', 'worktree', 'add', '--force', '--detach', str(TREE)], cwd=ROOT, check=True)
    run('git', 'checkout', '--quiet', '--force', '--detach', subprocess.check_output(
        ['git', 'rev-parse', 'HEAD'], cwd=ROOT, text=True).strip())
    run('cmake', '--preset', 'dev')
    if not build() or noticed_by('nothing'):
        sys.exit('cdr mutate: the tests do not pass without a fault')
    results = {name: [] for name in names}
    for _ in range(options.count):
        for name in names:
            results[name].append(seed(name))
    for name, all_ in results.items():
        print(f'{name}: ' + ', '.join(f'{all_.count(one)} {one}' for one in ('noticed', 'MISSED', 'refused')))


if __name__ == '__main__':
    main()
