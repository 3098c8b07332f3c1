#pragma once

// Stand-in for the header of macOS: the types of entries.

enum vtype { VNON, VREG, VDIR, VBLK, VCHR, VLNK, VSOCK, VFIFO };
