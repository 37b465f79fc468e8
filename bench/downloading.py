"""Downloads beside curl: the same archive, the same answers of whole series, curl's into a file each.

curl fetches over 1, 4 and 8 connections; one run of each chooses the one that takes turns with us.
"""
import os
import shutil
import sqlite3
import subprocess
import time

from uploading import BATCHES, PASSWORD, USER, Archive, files_of, write_bodies, write_requests

KINDS = (('large', 'CT images'), ('small', 'small files'))
CONNECTIONS = (1, 4, 8)
BAR = 0.9
MOST_MEMORY = 100


class Run:
    """The downloads of one corpus, which the archive holds."""

    def __init__(self, bench, archive, folder, kind):
        self.bench, self.archive, self.folder = bench, archive, folder
        corpus = bench.corpus(kind)
        self.files = files_of(corpus)
        bench.import_into(folder, 'reference', corpus)
        with sqlite3.connect(os.path.join(folder, 'index.db')) as index:
            self.series = index.execute(
                'SELECT StudyInstanceUID, SeriesInstanceUID, NumberOfSeriesRelatedInstances FROM generalseries '
                'JOIN generalstudy ON generalstudy.pk = study_fk ORDER BY generalseries.pk').fetchall()
        self.list = os.path.join(folder, 'list')
        with open(self.list, 'w', encoding='ascii') as file:
            file.writelines(f'{study} {series} {objects}\n' for study, series, objects in self.series)
        self.fill()

    def fill(self):
        bodies = write_bodies(os.path.join(self.folder, 'bodies'), self.files, BATCHES[1])
        requests = os.path.join(self.folder, 'uploads')
        write_requests(requests, self.archive, bodies)
        subprocess.run(['curl', '--no-progress-meter', '--parallel', '--parallel-max', '4', '--config', requests],
                       check=True)
        shutil.rmtree(os.path.join(self.folder, 'bodies'))
        if self.archive.objects() != len(self.files):
            raise SystemExit(f'{self.archive.objects()} of {len(self.files)} objects were stored')

    def curl(self, connections):
        """Objects a second."""
        target = self.bench.target()
        requests = os.path.join(self.folder, 'requests')
        with open(requests, 'w', encoding='utf8') as file:
            file.write('\nnext\n'.join('\n'.join([
                f'url = "{self.archive.url(f"dicom-web/studies/{study}/series/{series}")}"', 'fail',
                f'user = "{USER}:{PASSWORD}"', f'output = "{target}/{number}"',
                'header = "Accept: multipart/related; type=\\"application/dicom\\"; transfer-syntax=*"'])
                for number, (study, series, _) in enumerate(self.series)) + '\n')
        start = time.monotonic()
        subprocess.run(['curl', '--no-progress-meter', '--parallel', '--parallel-immediate', '--parallel-max',
                        str(connections), '--config', requests], check=True)
        return len(self.files) / (time.monotonic() - start)

    def ours(self, mode):
        """Objects a second, and MiB over idle."""
        target = self.bench.target()
        place = target if mode == 'files' else os.path.join(target, 'index.db')
        result = self.bench.program('bench_download', mode, place, self.archive.url('dicom-web'), USER, PASSWORD, self.list)
        return len(self.files) / result['seconds'], result['memory'] / 1024


def measure_kind(bench, kind, what, tools):
    say, turned, median, spread = tools
    folder = bench.path('download')
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(os.path.join(folder, 'archive'))
    with Archive(os.path.join(folder, 'archive')) as archive:
        run = Run(bench, archive, folder, kind)
        found = {connections: run.curl(connections) for connections in CONNECTIONS}
        best = max(found, key=found.get)
        say(', '.join(f'{connections}: {rate:.0f}/s' for connections, rate in found.items()))
        rates, memory = {'curl': [], 'files': [], 'index': []}, []
        for number in bench.rounds():
            for contender in turned(list(rates), number):
                if contender == 'curl':
                    rates[contender].append(run.curl(best))
                else:
                    rate, most = run.ours(contender)
                    rates[contender].append(rate)
                    memory.append(most)
    bench.rows.append((f'{len(run.files):,} {what} in {len(run.series):,} series downloaded by curl, '
                       f'{best} connection(s)', f'{spread(rates["curl"], 0)}/s', '', ''))
    for mode, name, bar in (('files', 'into files', BAR), ('index', 'into the index', None)):
        ratios = [one / other for one, other in zip(rates[mode], rates['curl'])]
        bench.row(f'... rate of ours to that, {name}', spread(ratios),
                  f'at least {bar}' if bar else 'no bar: curl indexes nothing', bar is None or median(ratios) >= bar)
    bench.row('... memory over idle', f'{spread(memory, 0)} MiB', f'at most {MOST_MEMORY} MiB',
              max(memory) <= MOST_MEMORY)
    shutil.rmtree(folder)


def measure(bench, say, turned, median, spread):
    for kind, what in KINDS:
        measure_kind(bench, kind, what, (say, turned, median, spread))
