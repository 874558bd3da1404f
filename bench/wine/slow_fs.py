#!/usr/bin/python3
"""An empty folder whose statfs takes a chosen time, like an offline share:
Wine passes the wait straight through to GetDiskFreeSpaceEx and friends.

Usage (as root): slow_fs.py MOUNTPOINT [SECONDS]   (stays in the foreground;
unmount with `fusermount -u MOUNTPOINT`). Debian's python3-fusepy names its
module `fusepy`.
"""
import errno
import stat
import sys
import time

try:
    from fusepy import FUSE, FuseOSError, Operations
except ImportError:
    from fuse import FUSE, FuseOSError, Operations


class SlowFs(Operations):
    def __init__(self, delay):
        self.delay = delay
        self.started = time.time()

    def getattr(self, path, fh=None):
        if path != "/":
            raise FuseOSError(errno.ENOENT)
        return {"st_mode": stat.S_IFDIR | 0o755, "st_nlink": 2,
                "st_ctime": self.started, "st_mtime": self.started, "st_atime": self.started}

    def readdir(self, path, fh):
        return [".", ".."]

    def statfs(self, path):
        # One line a query, so that a benchmark can tell the drive was asked.
        print("statfs %s at %.3f" % (path, time.time()), flush=True)
        time.sleep(self.delay)
        # 1000 MB, 300 MB free: a plain answer once the wait is over.
        return {"f_bsize": 4096, "f_frsize": 4096, "f_blocks": 256000, "f_bfree": 76800,
                "f_bavail": 76800, "f_files": 1000, "f_ffree": 1000, "f_favail": 1000,
                "f_namemax": 255}


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit("usage: slow_fs.py MOUNTPOINT [SECONDS]")
    delay = float(sys.argv[2]) if len(sys.argv) == 3 else 10.0
    FUSE(SlowFs(delay), sys.argv[1], foreground=True, nothreads=False, allow_other=True)


if __name__ == "__main__":
    main()
