"""Sending beside storescu: the same peer, the same files, the same largest PDU, Nagle's algorithm off at both ends."""
import os
import subprocess
import time

from receiving import SENDER, free_port, wait_for

KINDS = (('large', 'CT images', (1,)), ('small', 'small files', (1, 2, 4)))
LARGEST_PDU = '131072'
# associations: what the rate must reach beside storescu; several must bring twice as much as one
BARS = {'large': {1: 0.95}, 'small': {1: 0.95, 2: 1.9, 4: 1.9}}


def timed(bench, corpus, associations):
    """Seconds until the last answer; storescu where there is no number of associations."""
    port, folder = free_port(), bench.target()
    received = os.path.join(folder, 'received')
    os.makedirs(received)
    # A process of its own for each association; what is stored is not the matter here but how fast it comes.
    server = subprocess.Popen(['storescp', '--fork', '-pdu', LARGEST_PDU, '-od', received, str(port)], env=SENDER,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        wait_for(port, server)
        if associations:
            return bench.program('bench_send', os.path.join(folder, 'index.send'), port, associations,
                                 corpus)['seconds']
        start = time.monotonic()
        subprocess.run(['storescu', '-pdu', LARGEST_PDU, '-aec', 'BENCH', '+sd', '+r', '127.0.0.1', str(port), corpus],
                       check=True, env=SENDER, stdout=subprocess.DEVNULL)
        return time.monotonic() - start
    finally:
        server.kill()
        server.wait()


def measure(bench, turned, median, spread):
    for kind, what, numbers in KINDS:
        corpus = bench.corpus(kind)
        files = sum(name.endswith('.dcm') for _, _, names in os.walk(corpus) for name in names)
        contenders = [0, *numbers]
        rates = {contender: [] for contender in contenders}
        for number in bench.rounds():
            for contender in turned(contenders, number):
                rates[contender].append(files / timed(bench, corpus, contender))
        bench.rows.append((f'{files:,} {what} sent by storescu', f'{spread(rates[0], 0)}/s', '', ''))
        for associations in numbers:
            bar = BARS[kind][associations]
            ratios = [one / its for one, its in zip(rates[associations], rates[0])]
            bench.row(f'... rate to that, {associations} association(s)', spread(ratios), f'at least {bar}',
                      median(ratios) >= bar)
