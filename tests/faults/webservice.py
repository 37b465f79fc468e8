"""What drivers share whose program talks to a DICOMweb service: the service, and jobs that are cut short."""
import http.server
import json
import socketserver
import struct
import subprocess
import threading
import time

import faultlib

STUDY_UID, SERIES_UID, INSTANCE_UID, PATIENT_NAME = 0x0020000d, 0x0020000e, 0x00080018, 0x00100010
WORK = 0.005  # seconds that a service takes for an object, as one that works
SETTLING = 0.3  # seconds after which what was on its way to the other end has come there
BOUNDARY = b'faults'
LONG = (b'OB', b'OW', b'OF', b'OD', b'OL', b'SQ', b'UT', b'UN', b'UC', b'UR')

# Rules of an index whose images are in the cloud or on their way there.
RULES = {**faultlib.RULES,
         'series whose recvnum is not the number of its images':
             'SELECT count(*) FROM series WHERE recvnum IS NOT (SELECT sum(NumberOfSeriesRelatedInstances) '
             'FROM generalseries WHERE SeriesInstanceUID = seriesUID)',
         'series whose upCloudnum is not the number of its flags':
             'SELECT count(*) FROM series WHERE ifnull(upCloudnum, 0) IS NOT (SELECT count(*) FROM images '
             'WHERE images.seriesUID = series.seriesUID AND Cloudflag = 1)'}


def identifiers(data):
    """The texts before the pixels of a file in explicit little endian, by tag."""
    found, at = {}, 132
    while at + 8 <= len(data):
        group, element = struct.unpack_from('<HH', data, at)
        if group > SERIES_UID >> 16:
            break
        is_long = data[at + 4:at + 6] in LONG
        length, = struct.unpack_from('<I' if is_long else '<H', data, at + (8 if is_long else 6))
        at += 12 if is_long else 8
        found[group << 16 | element] = data[at:at + length].rstrip(b'\0 ').decode('utf8', 'replace')
        at += length
    return found


class Tally:
    """How often the other end has had each object."""

    def __init__(self):
        self.times, self.total, self.news = {}, 0, threading.Condition()

    def note(self, *uids):
        with self.news:
            for uid in uids:
                self.times[uid] = self.times.get(uid, 0) + 1
            self.total += len(uids)
            self.news.notify_all()

    def wait_for(self, total):
        with self.news:
            return self.news.wait_for(lambda: self.total >= total, faultlib.LONGEST_WAIT)

    def check(self, scene, recorded, noted, what):
        """What was recorded once stays so and never goes again.

        @param recorded how often the other end had each object when it was first found to be recorded; is followed
        @param noted what is recorded now
        """
        with self.news:
            times = dict(self.times)
        scene.expect(noted <= times.keys(), f'{what}: {len(noted - times.keys())} objects never went')
        again = [uid for uid, before in recorded.items() if times.get(uid) != before]
        scene.expect(not again, f'{what}: {len(again)} objects went again after they were recorded')
        scene.expect(recorded.keys() <= noted, f'{what}: {len(recorded.keys() - noted)} objects were forgotten')
        for uid in noted - recorded.keys():
            recorded[uid] = times.get(uid, 0)

    def twice(self):
        return sum(times > 1 for times in self.times.values())


def cut_short(arguments, choice, tally, start, left):
    """Kills a job as often as wanted; each start goes on with it. @return how many kills hit

    A kill comes after some more objects, plus the time that some more would take, so that something is left for each.
    @param start(hits) starts the job; what it answers is killed when its context ends
    @param left(what) checks what a kill has left. @return how many objects have not gone
    """
    most = arguments.files // (arguments.kills + 1)
    for hits in range(arguments.kills):
        until = choice.randint(1, most)
        more = choice.randint(1, until)
        before = tally.total
        with start(hits):
            reached = tally.wait_for(before + 1)
            begun = time.monotonic()
            reached = tally.wait_for(before + more) and reached
            time.sleep((time.monotonic() - begun) * (until - more) / more)
        time.sleep(SETTLING)
        what = f'kill {hits + 1} after {more} more objects and the time of {until - more}'
        rest = left(what)
        print(f'{what}: {rest} left', flush=True)
        if not reached or rest == 0:
            return hits
    return arguments.kills


class Killed(subprocess.Popen):
    """A process that is killed at the end of its context."""

    def __exit__(self, *_):
        self.kill()
        self.wait()


class Handler(http.server.BaseHTTPRequestHandler):
    """Stores everything, and what it gives is up to its heirs."""

    protocol_version = 'HTTP/1.1'

    def begin(self, content, status=200, length=None):
        """Without a length the answer ends with the line."""
        self.send_response(status)
        self.send_header('Content-Type', content)
        self.send_header(*(('Connection', 'close') if length is None else ('Content-Length', str(length))))
        self.end_headers()

    def answer(self, answer):
        body = json.dumps(answer).encode()
        self.begin('application/dicom+json', length=len(body))
        self.wfile.write(body)

    def do_POST(self):
        body = self.rfile.read(int(self.headers['Content-Length']))
        boundary = b'--' + self.headers.get_param('boundary', header='content-type').encode()
        self.server.asked.set()
        self.server.gate.wait()
        stored = []
        for part in body.split(boundary)[1:-1]:
            time.sleep(WORK)
            content = part.partition(b'\r\n\r\n')[2][:-2]
            uid = identifiers(content)[INSTANCE_UID]
            self.server.keep(uid, content)
            stored.append({'00081155': {'vr': 'UI', 'Value': [uid]}})
        self.answer({'00081199': {'vr': 'SQ', 'Value': stored}})

    def give(self, objects):
        """Objects by UID, each noted when it has gone."""
        self.begin(f'multipart/related; type="application/dicom"; boundary={BOUNDARY.decode()}')
        for uid, content in objects:
            self.wfile.write(b'\r\n--' + BOUNDARY + b'\r\nContent-Type: application/dicom\r\n\r\n' + content)
            self.server.note(uid)
            time.sleep(WORK)
        self.wfile.write(b'\r\n--' + BOUNDARY + b'--\r\n')

    def log_message(self, *_):
        pass


class Service(Tally, socketserver.ThreadingMixIn, http.server.HTTPServer):
    daemon_threads = True

    def __init__(self, handler=Handler):
        Tally.__init__(self)
        http.server.HTTPServer.__init__(self, ('127.0.0.1', 0), handler)
        self.address = f'http://127.0.0.1:{self.server_port}/web'
        self.asked = threading.Event()  # to store something
        self.gate = threading.Event()  # while it is not set, nothing that is asked to be stored is answered
        self.gate.set()
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def keep(self, uid, _):
        self.note(uid)

    def handle_error(self, *_):
        pass  # a client that was killed
