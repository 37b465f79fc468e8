"""What the fault drivers share: the program under test, and what must hold of an index after a fault."""
import argparse
import json
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile

SKIPPED = 77
UPLOAD_STATES = ('未上传', '上传中', '已上传')
RECORD_TABLES = ('patient', 'generalstudy', 'generalseries', 'imageformat')


def skip(why):
    print(f'skipped: {why}')
    sys.exit(SKIPPED)


def parser(description):
    result = argparse.ArgumentParser(description=description)
    result.add_argument('--program', help='the program faultprocess; looked for in build/dev where not given')
    result.add_argument('--place', default=None, help='folder for the temporary files')
    return result


def program_of(arguments):
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    program = arguments.program or os.path.join(root, 'build/dev/bin/faultprocess')
    if not os.path.exists(program):
        sys.exit(f'{program} is not built: ./test builds it, or name it with --program')
    return os.path.abspath(program)


class Scene:
    """A temporary folder with the program under test; problems are collected, not thrown."""

    def __init__(self, arguments):
        self.program = program_of(arguments)
        self.folder = tempfile.mkdtemp(prefix='pm-faults-', dir=arguments.place)
        self.prefix = []
        self.problems = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        subprocess.run(['chmod', '-R', 'u+rwX', self.folder], check=False)
        shutil.rmtree(self.folder, ignore_errors=True)

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
    """The store holds what the index names, byte for byte as its source, and nothing else."""
    named = rows(index, "SELECT FilePath, SourcePath FROM imageformat WHERE IrradiationEventUID = 'copy'")
    stray = stored_files(index) - {path for path, _ in named}
    scene.expect(not stray, f'{what}: {len(stray)} files of the store belong to no record, such as {sorted(stray)[:2]}')
    different = [path for path, source in named if not same_bytes(path, source)]
    scene.expect(not different, f'{what}: {len(different)} copies differ from their source, such as {different[:1]}')


def same_bytes(one, other):
    try:
        with open(one, 'rb') as first, open(other, 'rb') as second:
            return first.read() == second.read()
    except OSError:
        return False
