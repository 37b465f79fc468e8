"""Uploads beside curl: the same archive, empty before each run, the same objects, the same answers asked for.

curl sends bodies that were put together beforehand: batches of 1, 10 and 100 objects over 1, 4 and 8 connections. One
run of each chooses the one that takes turns with us.
"""
import base64
import json
import os
import shutil
import subprocess
import time
import urllib.request

from receiving import free_port, wait_for

KINDS = (('large', 'CT images'), ('small', 'small files'))
BATCHES, CONNECTIONS = (1, 10, 100), (1, 4, 8)
USER, PASSWORD = 'bench', 'bench'
BOUNDARY = 'bench-boundary'
PLUGIN = '/usr/share/orthanc/plugins/libOrthancDicomWeb.so'
BAR, MOST_MEMORY = 0.95, 100  # of the rate of curl; MiB over idle


class Archive:
    """orthanc with its DICOMweb plugin, empty, in a folder of its own."""

    def __init__(self, folder):
        self.port = free_port()
        configuration = os.path.join(folder, 'orthanc.json')
        with open(configuration, 'w', encoding='utf8') as file:
            json.dump({'Name': 'bench', 'StorageDirectory': folder, 'IndexDirectory': folder,
                       'DicomServerEnabled': False, 'HttpPort': self.port, 'RemoteAccessAllowed': False,
                       'AuthenticationEnabled': True, 'RegisteredUsers': {USER: PASSWORD}, 'Plugins': [PLUGIN],
                       'OverwriteInstances': True}, file)
        self.process = subprocess.Popen(['Orthanc', configuration], stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        wait_for(self.port, self.process)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    def url(self, path):
        return f'http://127.0.0.1:{self.port}/{path}'

    def objects(self):
        credentials = base64.b64encode(f'{USER}:{PASSWORD}'.encode()).decode()
        request = urllib.request.Request(self.url('statistics'), headers={'Authorization': f'Basic {credentials}'})
        with urllib.request.urlopen(request) as answer:
            return json.load(answer)['CountInstances']


def files_of(corpus):
    return sorted(os.path.join(at, name) for at, _, names in os.walk(corpus) for name in names if name.endswith('.dcm'))


def write_body(path, files):
    with open(path, 'wb') as body:
        for name in files:
            body.write(f'\r\n--{BOUNDARY}\r\nContent-Type: application/dicom\r\n\r\n'.encode())
            with open(name, 'rb') as file:
                body.write(file.read())
        body.write(f'\r\n--{BOUNDARY}--\r\n'.encode())


def write_bodies(folder, files, batch):
    """One body of a request for so many files each, where they are not yet there. @return their paths"""
    bodies = {os.path.join(folder, f'{first}.body'): files[first:first + batch] for first in range(0, len(files), batch)}
    if not os.path.exists(folder):
        os.makedirs(folder)
        for path, some in bodies.items():
            write_body(path, some)
    return list(bodies)


def write_requests(path, archive, bodies):
    content = f'multipart/related; type=\\"application/dicom\\"; boundary={BOUNDARY}'
    one = '\n'.join(['url = "%s"' % archive.url('dicom-web/studies'), 'request = "POST"', f'user = "{USER}:{PASSWORD}"',
                     f'header = "Content-Type: {content}"', 'header = "Accept: application/dicom+json"',
                     'header = "Expect:"', 'output = "/dev/null"', 'fail', 'upload-file = "%s"'])
    with open(path, 'w', encoding='utf8') as file:
        file.write('\nnext\n'.join(one % body for body in bodies) + '\n')


class Run:
    """The uploads of one corpus."""

    def __init__(self, bench, kind):
        self.bench = bench
        self.corpus = bench.corpus(kind)
        self.files = files_of(self.corpus)
        self.folder = bench.path('upload')
        shutil.rmtree(self.folder, ignore_errors=True)
        os.makedirs(self.folder)
        bench.import_into(self.folder, 'reference', self.corpus)

    def checked(self, archive):
        if archive.objects() != len(self.files):
            raise SystemExit(f'{archive.objects()} of {len(self.files)} objects were stored')

    def curl(self, batch, connections):
        """Objects a second."""
        bodies = write_bodies(os.path.join(self.folder, f'bodies-{batch}'), self.files, batch)
        with Archive(self.bench.target()) as archive:
            requests = os.path.join(self.folder, 'requests')
            write_requests(requests, archive, bodies)
            start = time.monotonic()
            subprocess.run(['curl', '--no-progress-meter', '--parallel', '--parallel-immediate', '--parallel-max',
                            str(connections), '--config', requests], check=True)
            seconds = time.monotonic() - start
            self.checked(archive)
        return len(self.files) / seconds

    def ours(self):
        """Objects a second, and MiB over idle."""
        index = os.path.join(self.folder, 'run.db')
        for suffix in ('', '-wal', '-shm'):
            if os.path.exists(index + suffix):
                os.remove(index + suffix)
        shutil.copy(os.path.join(self.folder, 'index.db'), index)
        with Archive(self.bench.target()) as archive:
            result = self.bench.program('bench_upload', index, archive.url('dicom-web'), USER, PASSWORD)
            self.checked(archive)
        return len(self.files) / result['seconds'], result['memory'] / 1024


def measure(bench, say, turned, median, spread):
    for kind, what in KINDS:
        run = Run(bench, kind)
        found = {(batch, connections): run.curl(batch, connections) for batch in BATCHES for connections in CONNECTIONS}
        best = max(found, key=found.get)
        say(', '.join(f'{batch}x{connections}: {rate:.0f}/s' for (batch, connections), rate in found.items()))
        rates, memory = {'curl': [], 'ours': []}, []
        for number in bench.rounds():
            for contender in turned(['curl', 'ours'], number):
                if contender == 'curl':
                    rates['curl'].append(run.curl(*best))
                else:
                    rate, most = run.ours()
                    rates['ours'].append(rate)
                    memory.append(most)
        ratios = [one / other for one, other in zip(rates['ours'], rates['curl'])]
        bench.rows.append((f'{len(run.files):,} {what} uploaded by curl, {best[0]} a request, {best[1]} connection(s)',
                           f'{spread(rates["curl"], 0)}/s', '', ''))
        bench.row('... rate to that of our uploads', spread(ratios), f'at least {BAR}', median(ratios) >= BAR)
        bench.row('... memory over idle', f'{spread(memory, 0)} MiB', f'at most {MOST_MEMORY}', max(memory) <= MOST_MEMORY)
        shutil.rmtree(run.folder)
