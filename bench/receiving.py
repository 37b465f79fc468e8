"""Receiving beside other receivers: the same sender, the same files, the same disk."""
import json
import os
import socket
import subprocess
import sys
import time

SENDER = {**os.environ, 'TCP_NODELAY': '1'}
CONTENDERS = ('storescp', 'orthanc', 'unsynced', 'synced')
KINDS = (('large', 'CT images'), ('received', 'small files'))


def free_port():
    with socket.socket() as probe:
        probe.bind(('127.0.0.1', 0))
        return probe.getsockname()[1]


def wait_for(port, process):
    for _ in range(600):
        if process.poll() is not None:
            sys.exit(f'{process.args[0]} has ended')
        with socket.socket() as probe:
            if probe.connect_ex(('127.0.0.1', port)) == 0:
                return
        time.sleep(0.05)
    sys.exit(f'{process.args[0]} does not listen')


def server_of(bench, name, folder, port, files):
    if name == 'storescp':
        command = ['storescp', '-od', folder, str(port)]
    elif name == 'orthanc':
        configuration = os.path.join(folder, 'orthanc.json')
        with open(configuration, 'w', encoding='utf8') as file:
            json.dump({'Name': 'bench', 'StorageDirectory': folder, 'IndexDirectory': folder, 'DicomPort': port,
                       'DicomAet': 'BENCH', 'HttpServerEnabled': False, 'DicomAlwaysAllowStore': True}, file)
        command = ['Orthanc', configuration]
    else:
        os.makedirs(os.path.join(folder, 'config'))
        with open(os.path.join(folder, 'config', 'main.ini'), 'w', encoding='utf8') as file:
            file.write(f'[dicom]\naeTitle=BENCH\nreceive=1\nreceivePort={port}\nreceiveSynced={int(name == "synced")}\n')
        command = [os.path.join(bench.programs, 'bench_receive'), os.path.join(folder, 'index.db'), str(files)]
    return subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=SENDER)


def timed(bench, name, corpus, files):
    """Seconds until all is sent, and with our receiver until all has its record, too."""
    port, folder = free_port(), bench.target()
    server = server_of(bench, name, folder, port, files)
    try:
        wait_for(port, server)
        start = time.monotonic()
        subprocess.run(['storescu', '-aec', 'BENCH', '+sd', '+r', '127.0.0.1', str(port), corpus], check=True,
                       env=SENDER, stdout=subprocess.DEVNULL)
        result = {}
        if name in ('synced', 'unsynced'):
            result = json.loads(server.communicate(timeout=600)[0].splitlines()[-1])
        return time.monotonic() - start, result
    finally:
        server.kill()
        server.wait()


def measure(bench, turned, median, spread):
    for kind, what in KINDS:
        corpus = bench.corpus(kind)
        files = sum(name.endswith('.dcm') for _, _, names in os.walk(corpus) for name in names)
        rates, peaks = {name: [] for name in CONTENDERS}, []
        for number in bench.rounds():
            for name in turned(list(CONTENDERS), number):
                seconds, result = timed(bench, name, corpus, files)
                rates[name].append(files / seconds)
                peaks.append(result.get('peakMib', 0))
        for name in ('storescp', 'orthanc'):
            bench.rows.append((f'{files:,} {what} received by {name}', f'{spread(rates[name], 0)}/s', '', ''))
        for name, other, bar in (('unsynced', 'storescp', 0.7), ('synced', 'orthanc', 2.0)):
            ratios = [one / its for one, its in zip(rates[name], rates[other])]
            bench.row(f'... received and indexed, {name}', f'{spread(rates[name], 0)}/s', '', True)
            bench.row(f'... rate to that of {other}', spread(ratios), f'at least {bar}', median(ratios) >= bar)
        bench.row('... memory', f'{max(peaks):.0f} MiB', '', True)
