"""A line to a far server: relays every connection to a port of this machine, each piece late by the same time."""

import asyncio
import contextlib
import threading


class DelayProxy:
    """Listens on `port` and relays to `target`; what is said takes `delay` seconds in each direction, however much it
    is. Runs on a thread of its own."""

    def __init__(self, port, target, delay=0.025):
        self.port, self.target, self.delay = port, target, delay
        self._loop = asyncio.new_event_loop()
        self._ready = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)

    def __enter__(self):
        self._thread.start()
        self._ready.wait(10)
        return self

    def __exit__(self, *_):
        self._loop.call_soon_threadsafe(self._loop.stop)
        self._thread.join(10)

    def _run(self):
        asyncio.set_event_loop(self._loop)
        self._loop.run_until_complete(asyncio.start_server(self._accept, "127.0.0.1", self.port))
        self._ready.set()
        self._loop.run_forever()

    async def _accept(self, reader, writer):
        far_reader, far_writer = await asyncio.open_connection("127.0.0.1", self.target)
        await asyncio.gather(self._relay(reader, far_writer), self._relay(far_reader, writer))

    async def _relay(self, reader, writer):
        """Reads at once and writes later, so that what follows closely is not held up by what went before."""
        pieces = asyncio.Queue()
        writing = asyncio.ensure_future(self._write_late(pieces, writer))
        with contextlib.suppress(ConnectionError):
            while piece := await reader.read(1 << 16):
                pieces.put_nowait((self._loop.time() + self.delay, piece))
        pieces.put_nowait((self._loop.time() + self.delay, b""))
        await writing

    async def _write_late(self, pieces, writer):
        with contextlib.suppress(ConnectionError):
            while True:
                due, piece = await pieces.get()
                await asyncio.sleep(due - self._loop.time())
                if not piece:
                    break
                writer.write(piece)
                await writer.drain()
        with contextlib.suppress(ConnectionError):
            writer.close()
