"""Runs ov-pipeline in a process of its own, under limits, and judges what it says and leaves."""
import contextlib
import os
import re
import signal
import subprocess
import tempfile
import threading
import xml.parsers.expat
import zipfile
from dataclasses import dataclass

import packages

BUILD = packages.HOUSE / "build/asan"
SECONDS = 30  # a job here takes a part of one
MEGABYTES = 1000  # the sanitizers' share included
LINE = 2000  # characters
# An exit code of its own tells a sanitizer's report from the program's word. The limit is there for this machine.
SANITIZERS = "exitcode=99:abort_on_error=0:allocator_may_return_null=1:print_stacktrace=1:hard_rss_limit_mb=2000"
# C0 but for tab and line feed, DEL, C1, marks that turn the direction, separators of lines.
ACTED_ON = re.compile("[\0-\x08\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]")


@dataclass
class Outcome:
    code: int  # of the exit; minus the signal that ended it
    out: bytes
    err: bytes
    megabytes: int
    is_late: bool


def run(arguments, folder, before=None, signals=(), stdout=None, says_little=False):
    """Runs ov-pipeline in a folder; before() is called in the new process; signals are pairs of seconds and a signal.

    A program that says little may say it into a pipe, which no limit on files cuts."""
    environment = dict(os.environ, TMPDIR=str(folder), ASAN_OPTIONS=SANITIZERS, UBSAN_OPTIONS=SANITIZERS,
                       LSAN_OPTIONS="print_suppressions=0")
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        process = subprocess.Popen([BUILD / "bin/ov-pipeline", *arguments], cwd=folder, env=environment,
                                   stdin=subprocess.DEVNULL, stdout=stdout or out,
                                   stderr=subprocess.PIPE if says_little else err, preexec_fn=before)
        handle = os.pidfd_open(process.pid)  # is no other process's, ever
        late = threading.Event()

        def send(sign, is_late=False):
            with contextlib.suppress(ProcessLookupError):
                signal.pidfd_send_signal(handle, sign)
                if is_late:
                    late.set()
        timers = [threading.Timer(SECONDS, send, [signal.SIGKILL, True])]
        timers += [threading.Timer(seconds, send, [sign]) for seconds, sign in signals]
        for timer in timers:
            timer.start()
        _, status, usage = os.wait4(process.pid, 0)
        for timer in timers:
            timer.cancel()
            timer.join()
        os.close(handle)
        process.returncode = os.waitstatus_to_exitcode(status)
        out.seek(0), err.seek(0)
        with process.stderr or err as said:
            words = said.read()
        return Outcome(process.returncode, out.read(), words, usage.ru_maxrss // 1024, late.is_set())


def faults_of_text(text, what, longest=LINE):
    try:
        text = text.decode()
    except UnicodeDecodeError as error:
        return [f"{what} is not UTF-8: {error.object[max(0, error.start - 30):error.end + 10]!r}"]
    faults = []
    acted_on = ACTED_ON.search(text)
    if acted_on:
        faults.append(f"{what} holds {acted_on.group()!a}: {text[max(0, acted_on.start() - 60):acted_on.end() + 20]!a}")
    line = max(text.split("\n"), key=len)
    if longest and len(line) > longest:
        faults.append(f"{what} has a line of {len(line)} characters: {line[:120]!a}...")
    return faults


def is_markup(text):
    try:
        xml.parsers.expat.ParserCreate().Parse(text, True)
        return True
    except xml.parsers.expat.ExpatError:
        return False


def faults(outcome, codes=(0, 1, 3), prints_ticket=False, longest=LINE):
    """What is wrong with how it ended and what it said, whatever it was asked. A ticket's lines end as the DOM has it."""
    if outcome.is_late:
        return [f"does not end within {SECONDS} s"]
    if outcome.code not in codes:
        return [f"ends with {outcome.code}: {outcome.err.decode(errors='replace')[:1500]!a}"]
    said = outcome.out.replace(b"\r\n", b"\n") if prints_ticket else outcome.out
    found = faults_of_text(said, "the output", None if prints_ticket else longest)
    found += faults_of_text(outcome.err, "the error line")
    if outcome.megabytes > MEGABYTES:
        found.append(f"takes {outcome.megabytes} MB")
    if outcome.code == 0 and prints_ticket and not is_markup(outcome.out):
        found.append(f"the ticket is not well formed: {outcome.out[:200]!a}")
    if outcome.code != 0:
        if not re.fullmatch(rb"ov-pipeline: [^\n]+\n", outcome.err):
            found.append(f"{outcome.err.count(bytes([10]))} lines for one failure: {outcome.err[:300]!a}")
    return found


def pages(job, folder):
    """The page lines of a job's parts: a number, a name and a size each."""
    outcome = run(["parts", job], folder)
    return outcome.code, re.findall(rb"^ +(page \d+ .*?)  ", outcome.out, re.MULTILINE)


def faults_of_package(file):
    try:
        with zipfile.ZipFile(file) as package:
            broken = package.testzip()
            names = [name.lower() for name in package.namelist()]
    except (zipfile.BadZipFile, NotImplementedError, UnicodeDecodeError) as error:
        return [f"the output is no package: {error}"]
    if broken or len(set(names)) != len(names):
        return [f"the output is damaged: {broken or 'names stand twice'}"]
    return []


def faults_of_output(outcome, job, output):
    """What is wrong with what a run left of a job in the folder of its output."""
    left = sorted(os.listdir(output.parent))
    if left != ([output.name] if outcome.code == 0 else []):
        return [f"leaves {left} with exit code {outcome.code}"]
    if outcome.code != 0:
        return []
    broken = faults_of_package(output)
    if broken:
        return broken
    code, printed = pages(output, output.parent)
    if code != 0:
        return [f"its own output is refused with {code}"]
    sent = pages(job, output.parent)[1]
    return [] if sent == printed else [f"of the pages {sent} come {printed}"]
