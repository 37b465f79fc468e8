"""What the fault drivers share: the programs under test, and what must hold of an index after a fault."""
import argparse
import json
import os
import random
import shutil
import signal
import socket
import sqlite3
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
UPLOAD_STATES = ('未上传', '上传中', '已上传')
RECORD_TABLES = ('patient', 'generalstudy', 'generalseries', 'imageformat')
BUILT = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))), 'build/dev/bin')
INSIDE = 'PM_FAULTS_OWN_MOUNTS'
LONGEST_WAIT = 60
LOOK = 0.002  # seconds
STRAY = 'stray-0123456789/1.1/1.2/1.3.dcm'  # of the form of a place in the store


def skip(why):
    print(f'skipped: {why}')
    sys.exit(SKIPPED)


def parser(description):
    result = argparse.ArgumentParser(description=description)
    result.add_argument('--programs', default=BUILT, help='folder of the programs under test; build/dev/bin by itself')
    result.add_argument('--place', default=None, help='folder for the temporary files')
    return result


def kill_parser(description, files, of=''):
    result = parser(description)
    result.add_argument('--kills', type=int, default=20, help=f'kills that hit{of}')
    result.add_argument('--files', type=int, default=files)
    result.add_argument('--seed', type=int, default=None, help='repeats a run')
    return result


def choice_of(arguments):
    """@return the random choices of a run; tells their seed"""
    seed = arguments.seed if arguments.seed is not None else random.SystemRandom().randrange(1 << 32)
    print(f'seed {seed}', flush=True)
    return random.Random(seed)


def until_hit(scene, kills, attempt, what='in all'):
    """Attempts, by attempt(number of the hit, patience), until enough kills have hit.

    Patience is the part of its longest delay that an attempt may wait. A machine can be faster than was thought, so a
    miss halves it.
    """
    hits = tries = 0
    patience = 1.0
    while hits < kills and tries < 10 * kills:
        tries += 1
        hit = bool(attempt(hits + 1, patience))
        hits += hit
        patience = min(1.0, 2 * patience) if hit else patience / 2
    scene.expect(hits == kills, f'{what}: only {hits} of {tries} kills hit')


def own_mounts(without):
    """Starts the script again where it may mount; as an ordinary user that needs a user namespace.

    @return whether it may mount; without says what is left out otherwise
    """
    if os.environ.get(INSIDE):
        return True
    unshare = ['unshare', '--mount'] if os.geteuid() == 0 else ['unshare', '--user', '--map-root-user', '--mount']
    if subprocess.run([*unshare, 'true'], stderr=subprocess.DEVNULL, check=False).returncode != 0:
        print(f'this machine allows no mounts: {without}')
        return False
    os.execvpe(unshare[0], [*unshare, sys.executable, '-B', os.path.abspath(sys.argv[0]), *sys.argv[1:]],
               {**os.environ, INSIDE: '1'})
    return False


def free_port():
    with socket.socket() as probe:
        probe.bind(('127.0.0.1', 0))
        return probe.getsockname()[1]


def listens(port):
    with socket.socket() as probe:
        return probe.connect_ex(('127.0.0.1', port)) == 0


class Scene:
    """A temporary folder with the program under test; problems are collected, not thrown."""

    def __init__(self, arguments):
        self.programs = os.path.abspath(arguments.programs)
        self.program = self.built('faultprocess')
        self.folder = tempfile.mkdtemp(prefix='pm-faults-', dir=arguments.place)
        self.prefix = []
        self.problems = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        subprocess.run(['chmod', '-R', 'u+rwX', self.folder], check=False)
        shutil.rmtree(self.folder, ignore_errors=True)

    def built(self, name):
        program = os.path.join(self.programs, name)
        if not os.path.exists(program):
            sys.exit(f'{program} is not built: ./test builds it, or name its folder with --programs')
        return program

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def expect(self, good, text):
        if not good:
            print(f'FAILED: {text}', flush=True)
            self.problems.append(text)
        return good

    def command(self, *arguments):
        return [*self.prefix, self.program, *map(str, arguments)]

    def run(self, *arguments, timeout=300):
        """Runs the program to its end; None where it crashed, which is a problem by itself."""
        done = subprocess.run(self.command(*arguments), stdout=subprocess.PIPE, timeout=timeout, check=False)
        if not self.expect(done.returncode == 0, f'{arguments} ended with {done.returncode}'):
            return None
        return json.loads(done.stdout) if done.stdout.strip() else {}

    def corpus(self, name, files, variant=1):
        folder = self.path(name)
        self.run('corpus', folder, files, variant)
        return folder

    def index(self, name):
        folder = self.path(name)
        os.makedirs(folder)
        return os.path.join(folder, 'index.db')

    def finish(self):
        print(f'{len(self.problems)} problems')
        sys.exit(1 if self.problems else 0)


class Workstation:
    """The workstation, offscreen, with settings and a home of its own."""

    def __init__(self, scene, index, *deed):
        """@param deed what somebody at its window does; without, nobody is there"""
        home = scene.path('home')
        os.makedirs(os.path.join(home, 'config'), exist_ok=True)
        if deed:
            command = [scene.built('workstationprocess'), index, home, *map(str, deed)]
        else:
            command = [scene.built('workstation'), '--database', index, '--config', home]
        homes = {name: home for name in ('HOME', 'XDG_DATA_HOME', 'XDG_CONFIG_HOME', 'XDG_CACHE_HOME')}
        self.log = scene.path('log')
        with open(self.log, 'wb') as log:
            self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=log, env={
                **os.environ, **homes, 'QT_QPA_PLATFORM': 'offscreen', 'QT_FORCE_STDERR_LOGGING': '1'})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()

    def logged(self):
        with open(self.log, encoding='utf8', errors='replace') as log:
            return log.read()

    def wait_for(self, condition, longest=LONGEST_WAIT):
        """@return whether it came to hold while the workstation lived"""
        deadline = time.monotonic() + longest
        while self.process.poll() is None and time.monotonic() < deadline:
            if condition():
                return True
            time.sleep(LOOK)
        return False

    def end(self):
        """@return whether it came to its end by itself, and well"""
        self.wait_for(lambda: False, 5 * LONGEST_WAIT)
        return self.process.poll() == 0

    def kill(self):
        """@return whether it was alive"""
        self.process.send_signal(signal.SIGKILL)
        return self.process.wait() == -signal.SIGKILL


def write_settings(scene, name, group, **values):
    os.makedirs(scene.path('home', 'config'), exist_ok=True)
    with open(scene.path('home', 'config', name), 'w', encoding='utf8') as file:
        file.write('\n'.join([f'[{group}]', *(f'{key}={value}' for key, value in values.items()), '']))


class StoredIndex:
    """An index whose images are in its store, made anew for each kill: other names of the same bytes."""

    def __init__(self, scene, name, source):
        self.path, self.full, self.links = scene.path(name, 'index.db'), scene.path(name + '-full'), scene.path('links')
        os.makedirs(os.path.dirname(self.path))
        scene.run('import', self.path, 'copy', 'keep', 0, source)
        os.rename(os.path.dirname(self.path), self.full)

    def fresh(self):
        folder = os.path.dirname(self.path)
        shutil.rmtree(folder, ignore_errors=True)
        subprocess.run(['cp', '-rl', os.path.join(self.full, 'store'), self.links], check=True)
        os.makedirs(folder)
        os.rename(self.links, os.path.join(folder, 'store'))
        mark = os.path.join(folder, 'store', '.index')  # written in place
        os.remove(mark)
        shutil.copy(os.path.join(self.full, 'store', '.index'), mark)
        shutil.copy(os.path.join(self.full, 'index.db'), self.path)
        return self.path


def start_again(scene, index, what, done=lambda: True):
    """Starts the workstation as a user does after a kill, until done() and until its store is in order.

    One file without a record is added to what the kill may have left: all are to be named in the log and set aside.
    """
    store = os.path.join(os.path.dirname(index), 'store')
    stray, aside = os.path.join(store, STRAY), os.path.join(store, '.removed')
    shutil.rmtree(aside, ignore_errors=True)
    os.makedirs(os.path.dirname(stray), exist_ok=True)
    with open(stray, 'wb'):
        pass
    with Workstation(scene, index) as workstation:
        ready = workstation.wait_for(lambda: stray in workstation.logged() and done())
        log = workstation.logged()
    scene.expect(ready, f'{what}: the next start does not come to its end: {log[-500:]}')
    scene.expect(not os.path.exists(stray), f'{what}: a file without a record stays in the store: {log[-500:]}')
    unnamed = [path for path in files_below(aside) if not any(
        os.path.join(aside, day, line.partition(store + '/')[2].strip()) == path
        for day in os.listdir(aside) for line in log.splitlines())]
    scene.expect(not unnamed, f'{what}: {len(unnamed)} files were set aside without a word, such as {unnamed[:1]}')


def files_below(folder):
    return {os.path.join(at, name) for at, _, names in os.walk(folder) for name in names}


def stored_files(index):
    """Files in the store's order: what has a dot before its name, or lies below such a folder, has another purpose."""
    store = os.path.join(os.path.dirname(index), 'store')
    return {path for path in files_below(store) if '/.' not in path[len(store):]}


def rows(index, sql, *values):
    connection = sqlite3.connect(index, timeout=10)
    try:
        return connection.execute(sql, values).fetchall()
    finally:
        connection.close()


def value(index, sql, *values):
    return rows(index, sql, *values)[0][0]


# Each answers the number of rows that break a rule.
RULES = {
    'patients without a name': "SELECT count(*) FROM patient WHERE ifnull(PatientName, '') = ''",
    'patients without a time': "SELECT count(*) FROM patient WHERE ifnull(updated_time, '') = ''",
    'patients whose count of studies is wrong':
        'SELECT count(*) FROM patient p WHERE NumberOfPatientRelatedStudies IS NOT '
        '(SELECT count(*) FROM generalstudy WHERE patient_fk = p.pk)',
    'patients whose count of series is wrong':
        'SELECT count(*) FROM patient p WHERE NumberOfPatientRelatedSeries IS NOT '
        '(SELECT count(*) FROM generalseries s JOIN generalstudy t ON t.pk = s.study_fk WHERE patient_fk = p.pk)',
    'patients whose count of images is wrong':
        'SELECT count(*) FROM patient p WHERE NumberOfPatientRelatedInstances IS NOT '
        '(SELECT count(*) FROM imageformat i JOIN generalseries s ON s.pk = i.series_fk '
        'JOIN generalstudy t ON t.pk = s.study_fk WHERE patient_fk = p.pk)',
    'studies whose count of series is wrong':
        'SELECT count(*) FROM generalstudy t WHERE NumberOfStudyRelatedSeries IS NOT '
        '(SELECT count(*) FROM generalseries WHERE study_fk = t.pk)',
    'studies whose count of images is wrong':
        'SELECT count(*) FROM generalstudy t WHERE NumberOfStudyRelatedInstances IS NOT '
        '(SELECT count(*) FROM imageformat i JOIN generalseries s ON s.pk = i.series_fk WHERE study_fk = t.pk)',
    'studies whose modalities are wrong':
        "SELECT count(*) FROM generalstudy t WHERE ModalitiesInStudy IS NOT (SELECT group_concat(Modality, '\\') FROM "
        "(SELECT DISTINCT Modality FROM generalseries WHERE study_fk = t.pk AND Modality <> '' ORDER BY Modality))",
    'series whose count of images is wrong':
        'SELECT count(*) FROM generalseries s WHERE NumberOfSeriesRelatedInstances IS NOT '
        '(SELECT count(*) FROM imageformat WHERE series_fk = s.pk)',
    'patients without studies': 'SELECT count(*) FROM patient WHERE pk NOT IN (SELECT patient_fk FROM generalstudy)',
    'studies without series': 'SELECT count(*) FROM generalstudy WHERE pk NOT IN (SELECT study_fk FROM generalseries)',
    'series without images': 'SELECT count(*) FROM generalseries WHERE pk NOT IN (SELECT series_fk FROM imageformat)',
}


def check_index(scene, index, what, rules=None):
    """Sound to the database, every record with its file, every derived column right."""
    sound = rows(index, 'PRAGMA integrity_check')
    scene.expect(sound == [('ok',)], f'{what}: integrity_check says {sound[:3]}')
    scene.expect(not rows(index, 'PRAGMA foreign_key_check'), f'{what}: foreign_key_check complains')
    missing = [path for (path,) in rows(index, 'SELECT FilePath FROM imageformat') if not os.path.exists(path)]
    scene.expect(not missing, f'{what}: {len(missing)} records without their file, such as {missing[:1]}')
    for rule, sql in (rules or RULES).items():
        broken = value(index, sql)
        scene.expect(broken == 0, f'{what}: {broken} {rule}')
    for table in RECORD_TABLES[:3]:
        states = {state for (state,) in rows(index, f'SELECT DISTINCT Status FROM {table}')}
        scene.expect(states <= set(UPLOAD_STATES), f'{what}: {table} has the states {states}')


def check_store(scene, index, what):
    """The store holds what the index names, byte for byte as its source where that is known, and nothing else."""
    named = rows(index, "SELECT FilePath, SourcePath FROM imageformat WHERE IrradiationEventUID = 'copy'")
    stray = stored_files(index) - {path for path, _ in named}
    scene.expect(not stray, f'{what}: {len(stray)} files of the store belong to no record, such as {sorted(stray)[:2]}')
    different = [path for path, source in named if source and not same_bytes(path, source)]
    scene.expect(not different, f'{what}: {len(different)} copies differ from their source, such as {different[:1]}')


def same_bytes(one, other):
    try:
        with open(one, 'rb') as first, open(other, 'rb') as second:
            return first.read() == second.read()
    except OSError:
        return False
