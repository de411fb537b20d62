"""The camera's RTSP streams, watched by an existing client (ffprobe) and by a viewer that misbehaves."""
import base64
import concurrent.futures
import contextlib
import json
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
import urllib.error
import urllib.parse
import urllib.request

ROOT = pathlib.Path(__file__).resolve().parents[2]
PASSWORD = "secret-1"
BOUND_S = 20
SETTLE_S = 1  # after a change
SOUNDS_PER_S = 12  # packets


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


def until(condition, seconds):
    """Waits until the condition holds. Returns how long that took."""
    begin = time.monotonic()
    while not condition():
        if time.monotonic() - begin > seconds:
            raise AssertionError(f"not within {seconds} s")
        time.sleep(0.05)
    return time.monotonic() - begin


class Camera:
    def __init__(self, product):
        self.state = tempfile.mkdtemp(prefix="camera-rtsp-")
        self.http, self.rtsp = free_port(), free_port()
        self.options = ["--state", self.state, "--product", product]
        self.run("settings", "set", "rtspsvr", f"rtsp_port={self.rtsp}")
        self.process = subprocess.Popen(
            [ROOT / "run", *self.options, "--port", str(self.http), "--rtsp"],
            env=os.environ | {"CAMERA_BUILD_DIR": str(ROOT / "build")},
            stdout=subprocess.PIPE,
        )
        self.opener = urllib.request.build_opener()
        while b"answers on" not in self.process.stdout.readline():
            pass
        until(self.listens, BOUND_S)

    def run(self, *words):
        environment = os.environ | {"CAMERA_BUILD_DIR": str(ROOT / "build")}
        subprocess.run([ROOT / "run", *self.options, *words], env=environment, check=True, stdout=subprocess.DEVNULL)

    def stop(self):
        """Returns how long the camera took to stop."""
        begin = time.monotonic()
        self.process.terminate()
        self.process.wait()
        taken = time.monotonic() - begin
        self.process.stdout.close()
        shutil.rmtree(self.state, ignore_errors=True)
        return taken

    def listens(self):
        with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", self.rtsp)):
            return True
        return False

    def ask(self, endpoint, **parameters):
        url = f"http://127.0.0.1:{self.http}/cgi-bin/{endpoint}.cgi?{urllib.parse.urlencode(parameters)}"
        request = urllib.request.Request(url, headers={"Accept": "application/json"})
        try:
            with self.opener.open(request, timeout=BOUND_S) as reply:
                return json.load(reply)
        except urllib.error.HTTPError as error:
            raise AssertionError(f"{url}: {error.read().decode()}") from error

    def set_password(self):
        self.ask("user_mod", name="admin", password=base64.b64encode(PASSWORD.encode()).decode())
        logins = urllib.request.HTTPPasswordMgrWithDefaultRealm()
        logins.add_password(None, f"127.0.0.1:{self.http}", "admin", PASSWORD)
        self.opener = urllib.request.build_opener(urllib.request.HTTPDigestAuthHandler(logins))

    def url(self, path, login=""):
        return f"rtsp://{login}127.0.0.1:{self.rtsp}/{path}"

    def processes(self):
        """Returns this camera's processes of the streams."""
        found = subprocess.run(["pgrep", "-f", "/bin/camera-rtsp$|^camera-picture frames"], capture_output=True, text=True)
        mine = []
        for process in map(int, found.stdout.split()):
            with contextlib.suppress(OSError):
                if self.state in pathlib.Path(f"/proc/{process}/mountinfo").read_text():
                    mine.append(process)
        return mine

    def descriptors(self):
        return sum(len(os.listdir(f"/proc/{process}/fd")) for process in self.processes())

    def cpu_seconds(self):
        fields = [pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split() for process in self.processes()]
        return sum(int(field[11]) + int(field[12]) for field in fields) / os.sysconf("SC_CLK_TCK")


class Viewer:
    """Watches a stream, or only begins to: reads nothing but the answers to its requests."""

    def __init__(self, url, source="127.0.0.1"):
        self.url, self.count = url, 0
        address = urllib.parse.urlsplit(url)
        self.connection = socket.create_connection((address.hostname, address.port), BOUND_S, (source, 0))

    def request(self, method, *headers, url=None):
        self.count += 1
        lines = [f"{method} {url or self.url} RTSP/1.0", f"CSeq: {self.count}", *headers, "", ""]
        self.connection.sendall("\r\n".join(lines).encode())
        reply = b""
        while b"\r\n\r\n" not in reply:
            part = self.connection.recv(4096)
            if not part:
                raise ConnectionResetError
            reply += part
        self.head = reply.partition(b"\r\n\r\n")[0].decode()
        self.session = next((line for line in self.head.split("\r\n") if line.startswith("Session:")), "").partition(";")[0]
        return int(self.head.split()[1])

    def play(self):
        self.request("SETUP", "Transport: RTP/AVP/TCP;unicast;interleaved=0-1", url=self.url + "/stream=0")
        return self.request("PLAY", self.session)

    def is_gone(self):
        self.connection.settimeout(0.01)
        with contextlib.suppress(TimeoutError):
            while True:
                try:
                    if not self.connection.recv(1 << 20):
                        return True
                except ConnectionResetError:
                    return True
        return False


def status(url):
    """Returns what the camera answers to a viewer without a login; 0 if it does not answer."""
    with contextlib.suppress(ConnectionError):
        viewer = Viewer(url)
        with viewer.connection:
            return viewer.request("DESCRIBE")
    return 0


def watch(url, framerate, seconds=6):
    """Returns what a real client sees: codec, width, height, pictures per second, kbit/s, and the codec of the sound."""
    command = ["ffprobe", "-v", "error", "-rtsp_transport", "tcp", "-read_intervals", f"%+#{seconds * (framerate + SOUNDS_PER_S)}", "-of", "json"]
    command += ["-show_entries", "stream=codec_type,codec_name,width,height:packet=codec_type,pts_time,size", url]
    packets = []
    for _ in range(3):  # on a busy machine, the sound may be all that the client has a time for
        seen = json.loads(subprocess.run(command, capture_output=True, check=True, timeout=90).stdout)
        packets = [packet for packet in seen["packets"] if packet["codec_type"] == "video" and "pts_time" in packet]
        if packets:
            break
    video = next(stream for stream in seen["streams"] if stream["codec_type"] == "video")
    sound = [stream["codec_name"] for stream in seen["streams"] if stream["codec_type"] == "audio"]
    start = float(packets[0]["pts_time"]) + 1  # the first picture is large, and the client adapts its clock
    packets = [packet for packet in packets if float(packet["pts_time"]) >= start]
    seconds = float(packets[-1]["pts_time"]) - float(packets[0]["pts_time"])
    bits = 8 * sum(int(packet["size"]) for packet in packets[:-1])
    return {
        "codec": video["codec_name"],
        "resolution": f"{video['width']}x{video['height']}",
        "framerate": (len({packet["pts_time"] for packet in packets}) - 1) / seconds,  # the headers of H.264 come apart
        "bitrate": bits / seconds / 1000,
        "sound": sound,
    }


CODECS = {"H264": "h264", "MPEG4": "mpeg4", "MJPEG": "mjpeg"}
SOUNDS = {1: "pcm_s16be", 2: "adpcm_g726le", 3: "aac", 4: "aac"}


class Streams(unittest.TestCase):
    def camera(self, product):
        camera = Camera(product)
        self.addCleanup(camera.stop)
        return camera

    def compare(self, camera, profile, has_sound):
        shown = camera.ask("video", profileid=profile)
        path = camera.ask("rtspurl", profileid=profile)["urlentry"]
        seen = watch(camera.url(path), shown["framerate"])
        self.assertEqual(seen["codec"], CODECS[shown["codec"]])
        self.assertEqual(seen["resolution"], shown["resolution"])
        self.assertAlmostEqual(seen["framerate"], shown["framerate"], delta=0.05 * shown["framerate"])
        if "bitrate" in shown:
            self.assertAlmostEqual(seen["bitrate"], shown["bitrate"], delta=0.25 * shown["bitrate"])
        self.assertEqual(seen["sound"], [SOUNDS[profile]] if has_sound else [])

    def test_what_video_cgi_shows_is_what_a_client_sees(self):
        changes = {  # of a profile in each display system, so that each codec has both kinds of quality
            0: {1: {"codec": "H264"}, 2: {"codec": "H264", "qualitymode": "Fixquality"}},
            1: {1: {"qualitymode": "Fixquality", "quality": 55}, 4: {"codec": "H264", "bitrate": 128}},
            2: {2: {"framerate": 5}, 3: {"quality": 95}},
        }
        for product in "ov9710", "full":
            camera = self.camera(product)
            systems = camera.ask("sensor_output")["supports"]
            for number, system in enumerate(systems):
                camera.ask("sensor_output", current=system)
                for profile, change in changes.get(number, {}).items():
                    camera.ask("video", profileid=profile, **change)
                time.sleep(SETTLE_S)
                with concurrent.futures.ThreadPoolExecutor(2) as pool:
                    for profile, seen in [(p, pool.submit(self.compare, camera, p, True)) for p in SOUNDS]:
                        with self.subTest(product=product, system=system, profile=profile):
                            seen.result()
            camera.ask("mic", enable="no")
            time.sleep(SETTLE_S)
            self.compare(camera, 3, False)

    def test_accounts_and_the_switch_guard_the_streams(self):
        camera = self.camera("ov7740")
        self.assertEqual(status(camera.url("live1")), 200)
        camera.set_password()
        until(lambda: status(camera.url("live1")) == 401, 4)

        def logs_in(login):
            command = ["ffprobe", "-v", "error", "-rtsp_transport", "tcp", camera.url("live1", login)]
            return subprocess.run(command, stderr=subprocess.DEVNULL).returncode == 0

        until(lambda: logs_in(f"admin:{PASSWORD}@"), 10)
        for login in "admin:wrong@", f"nobody:{PASSWORD}@":
            self.assertFalse(logs_in(login), login)
        guess = 'Authorization: Digest username="admin", realm="camera", nonce="0", uri="/", response="0"'
        guesser, slowed = Viewer(camera.url("live1")), 0
        for _ in range(30):
            self.assertEqual(guesser.request("DESCRIBE", guess), 401)
            slowed += "WWW-Authenticate" not in guesser.head
        self.assertTrue(15 <= slowed <= 21, slowed)
        self.assertFalse(logs_in(f"admin:{PASSWORD}@"), "it would tell a right guess")
        guesser.request("DESCRIBE", guess.replace("admin", "ann"))
        self.assertIn("WWW-Authenticate", guesser.head)
        until(lambda: logs_in(f"admin:{PASSWORD}@"), 10)
        camera.ask("stream_auth", livevideo="off")
        until(lambda: status(camera.url("live1")) == 200, 2)
        viewer = Viewer(camera.url("live1"))
        self.assertEqual(viewer.play(), 200)
        camera.ask("stream_auth", livevideo="on")
        until(viewer.is_gone, 2)
        self.assertEqual(status(camera.url("live1")), 401)

    def test_changed_settings_ports_and_paths_move_the_streams(self):
        camera = self.camera("ov7740")
        self.assertEqual(status(camera.url("nothing")), 404)
        changed, other = Viewer(camera.url("live1")), Viewer(camera.url("live2"))
        self.assertEqual((changed.play(), other.play()), (200, 200))
        camera.ask("video", profileid=1, framerate=5)
        until(changed.is_gone, 2)
        self.assertFalse(other.is_gone())
        camera.ask("rtspurl", profileid=2, urlentry="elsewhere")
        until(other.is_gone, 2)
        self.assertEqual((status(camera.url("live2")), status(camera.url("elsewhere"))), (404, 200))
        camera.rtsp = free_port()
        camera.ask("network", rtspport=camera.rtsp)
        until(camera.listens, 4)
        self.compare(camera, 2, True)

    def test_slow_clients_keep_nobody_out(self):
        camera = self.camera("ov7740")
        viewer = Viewer(camera.url("live1"), "127.0.0.2")
        self.assertEqual(viewer.play(), 200)
        slow = [Viewer(camera.url("live1"), "127.0.0.2") for _ in range(300)]
        for _ in range(12):
            self.assertFalse(viewer.is_gone())
            for client in slow:
                with contextlib.suppress(OSError):
                    client.connection.sendall(b"O")
            begin = time.monotonic()
            self.assertEqual(Viewer(camera.url("live1")).request("DESCRIBE"), 200)
            self.assertLess(time.monotonic() - begin, 1)
            time.sleep(1)
        self.assertTrue(all(client.is_gone() for client in slow))

    def test_viewers_come_and_go(self):
        camera = self.camera("ov9710")
        for turn in range(101):
            viewer = Viewer(camera.url(f"live{turn % 4 + 1}"))
            with viewer.connection:
                self.assertEqual(viewer.play(), 200)
            if turn == 20:
                until(lambda: len(camera.processes()) == 1, 10)
                idle = camera.descriptors()
        until(lambda: len(camera.processes()) == 1, 10)
        self.assertLessEqual(camera.descriptors(), idle + 2)

        camera.ask("video", profileid=1, framerate=30)
        time.sleep(SETTLE_S)
        idler = Viewer(camera.url("live1"))
        self.assertEqual(idler.play(), 200)
        path = camera.url("live1")
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            seen = [pool.submit(watch, path, 30, 9) for _ in range(4)]
            time.sleep(3)
            before, begin = camera.cpu_seconds(), time.monotonic()
            time.sleep(3)
            used = (camera.cpu_seconds() - before) / (time.monotonic() - begin)
            self.assertLess(used, 1, "cores for four viewers")
            for viewer in seen:
                self.assertAlmostEqual(viewer.result()["framerate"], 30, delta=1.5)
        until(lambda: len(camera.processes()) == 1, 60)  # the viewer that does not read is dropped
        self.assertTrue(idler.is_gone())
        still = Viewer(camera.url("live1"))
        self.assertEqual(still.play(), 200)
        self.assertLess(camera.stop(), 4)


if __name__ == "__main__":
    unittest.main()
