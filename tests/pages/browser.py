"""A browser without a screen, driven through a pair of pipes."""
import base64
import json
import os
import select
import subprocess
import tempfile
import time

PROGRAM = "chromium-headless-shell"
SECONDS = 30


class Browser:
    """Ends with `close`. Waits for each answer at most SECONDS."""

    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self.writing = os.pipe()
        self.reading, from_browser = os.pipe()
        # It reads its descriptor 3 and writes to 4. In a container root has no sandbox and little shared
        # memory.
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec "$@" 3<&{to_browser} 4>&{from_browser}', "browser", PROGRAM, "--no-sandbox",
             "--disable-dev-shm-usage", "--disable-gpu", f"--user-data-dir={self.profile.name}",
             "--remote-debugging-pipe"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            pass_fds=(to_browser, from_browser))
        os.close(to_browser)
        os.close(from_browser)
        self.rest = b""
        self.count = 0
        self.events = []

    def close(self):
        self.process.terminate()
        self.process.wait()
        os.close(self.writing)
        os.close(self.reading)
        self.profile.cleanup()

    def command(self, method, session=None, **parameters):
        """Gives the result of a command of the DevTools protocol."""
        self.count += 1
        message = {"id": self.count, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        os.write(self.writing, json.dumps(message).encode() + b"\0")
        answer = self.wait_for(lambda said: said.get("id") == self.count)
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']['message']}")
        return answer["result"]

    def event(self, method, matches=lambda parameters: True):
        """Waits for an event that has not been waited for, and gives its parameters."""
        def is_wanted(said):
            return said.get("method") == method and matches(said["params"])
        for said in self.events:
            if is_wanted(said):
                self.events.remove(said)
                return said["params"]
        return self.wait_for(is_wanted)["params"]

    def wait_for(self, is_wanted):
        until = time.monotonic() + SECONDS
        while True:
            *messages, self.rest = self.rest.split(b"\0")
            said = [json.loads(message) for message in messages]
            wanted = [message for message in said if is_wanted(message)]
            self.events += [message for message in said if message not in wanted[:1] and "method" in message]
            if wanted:
                return wanted[0]
            if not select.select([self.reading], [], [], max(0, until - time.monotonic()))[0]:
                raise TimeoutError("the browser does not answer")
            more = os.read(self.reading, 1 << 20)
            if not more:
                raise RuntimeError(f"{PROGRAM} has ended with {self.process.wait()}")
            self.rest += more


class Page:
    """A window of its own, with cookies and downloads of its own."""

    def __init__(self, browser, proxy=None):
        self.browser = browser
        settings = {"proxyServer": proxy, "proxyBypassList": "<-loopback>"} if proxy else {}
        self.context = browser.command("Target.createBrowserContext", **settings)["browserContextId"]
        target = browser.command("Target.createTarget", url="about:blank", browserContextId=self.context)
        self.session = browser.command("Target.attachToTarget", targetId=target["targetId"],
                                       flatten=True)["sessionId"]
        self.command("Page.enable")
        self.command("Page.setLifecycleEventsEnabled", enabled=True)
        self.wait_until_loaded(lambda loader: True)

    def close(self):
        self.browser.command("Target.disposeBrowserContext", browserContextId=self.context)

    def command(self, method, **parameters):
        return self.browser.command(method, self.session, **parameters)

    def resize(self, width, height):
        """Makes it a handheld's screen, on which a page is as wide as it says itself."""
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                     mobile=True)

    def open(self, address):
        said = self.command("Page.navigate", url=address)
        if "errorText" in said:
            raise RuntimeError(f"{address}: {said['errorText']}")
        self.loader = said["loaderId"]
        self.wait_until_loaded(lambda loader: loader == self.loader)

    def follow(self, selector):
        """Clicks at a link, and waits for the page behind it."""
        self.click(selector)
        self.wait_until_loaded(lambda loader: loader != self.loader)

    def wait_until_loaded(self, is_wanted):
        event = self.browser.event("Page.lifecycleEvent", lambda said: said["name"] == "load" and
                                   is_wanted(said["loaderId"]))
        self.loader = event["loaderId"]

    def value(self, script):
        """What an expression of JavaScript gives, as far as JSON can tell."""
        said = self.command("Runtime.evaluate", expression=script, returnByValue=True)
        if "exceptionDetails" in said:
            raise RuntimeError(said["exceptionDetails"]["exception"]["description"])
        return said["result"].get("value")

    def click(self, selector):
        """Presses the mouse in the middle of an element, having scrolled to it."""
        x, y = self.value(f"""(() => {{
            const element = document.querySelector({json.dumps(selector)});
            element.scrollIntoView({{block: "center"}});
            const box = element.getClientRects()[0];
            return [box.x + box.width / 2, box.y + box.height / 2];
        }})()""")
        for kind in ("mousePressed", "mouseReleased"):
            self.command("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def picture(self, file):
        """Saves what is seen of it as PNG."""
        file.write_bytes(base64.b64decode(self.command("Page.captureScreenshot")["data"]))

    def save_downloads_in(self, folder):
        self.browser.command("Browser.setDownloadBehavior", behavior="allow", browserContextId=self.context,
                             downloadPath=str(folder), eventsEnabled=True)

    def downloaded(self):
        """Waits for the end of a download; the name that the file has got."""
        begun = self.browser.event("Browser.downloadWillBegin")
        ended = self.browser.event("Browser.downloadProgress", lambda said: said["guid"] == begun["guid"] and
                                   said["state"] != "inProgress")
        if ended["state"] != "completed":
            raise RuntimeError(f"the download has ended as {ended['state']}")
        return begun["suggestedFilename"]
