# ext4: mkfs.ext4 formats a sparse 64 MiB image file with a fixed UUID, label, hash seed, mount
# point and time (E2FSPROGS_FAKE_TIME); the superblock's fields are checked against dumpe2fs -h.
# The feature, mount-option and flag words are built from the names dumpe2fs lists with the bit
# values of the ext4 on-disk format documentation. Fields that belong to features this file system
# does not have (snapshots, errors, quotas, encryption, MMP, RAID) are zero. The journal inode's
# block map copy is not printed by dumpe2fs: it is read from the file with od.
out="$1"
img="$out/ext4-mkfs.img"
rm -f "$img"
truncate -s 64M "$img"
E2FSPROGS_FAKE_TIME=1700000000 mkfs.ext4 -q -F -b 4096 -I 256 -m 5 \
  -U 01234567-89ab-cdef-0123-456789abcdef -L TOLMOEXT4 -M /tolmo \
  -E hash_seed=fedcba98-7654-3210-fedc-ba9876543210,root_owner=1000:1000 "$img"
TZ=UTC dumpe2fs -h "$img" >report.txt 2>/dev/null
. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
hex_bytes "$img" $((1024 + 0x10C)) 16 >journal-blocks.txt
python3 - report.txt journal-blocks.txt >"$out/ext4-mkfs.expect" <<'PY'
import calendar, re, sys, time, uuid
report = dict(re.match(r"([^:]+):\s*(.*)", line).groups() for line in open(sys.argv[1]) if ":" in line)
journal_blocks = open(sys.argv[2]).read().strip()
def field(name):
    return report[name].strip()
def number(name):
    return int(field(name).split()[0], 0)
def when(name):
    text = field(name)
    return 0 if text == "n/a" else calendar.timegm(time.strptime(text, "%a %b %d %H:%M:%S %Y"))
def bits(names, table):
    value = 0
    for name in names.split():
        value |= table[name]
    return value
compat = {"dir_prealloc": 0x1, "imagic_inodes": 0x2, "has_journal": 0x4, "ext_attr": 0x8, "resize_inode": 0x10,
          "dir_index": 0x20, "sparse_super2": 0x200, "fast_commit": 0x400, "stable_inodes": 0x800, "orphan_file": 0x1000}
incompat = {"compression": 0x1, "filetype": 0x2, "needs_recovery": 0x4, "journal_dev": 0x8, "meta_bg": 0x10,
            "extent": 0x40, "64bit": 0x80, "mmp": 0x100, "flex_bg": 0x200, "ea_inode": 0x400, "dirdata": 0x1000,
            "metadata_csum_seed": 0x2000, "large_dir": 0x4000, "inline_data": 0x8000, "encrypt": 0x10000, "casefold": 0x20000}
ro_compat = {"sparse_super": 0x1, "large_file": 0x2, "huge_file": 0x8, "uninit_bg": 0x10, "dir_nlink": 0x20,
             "extra_isize": 0x40, "quota": 0x100, "bigalloc": 0x200, "metadata_csum": 0x400, "replica": 0x800,
             "read-only": 0x1000, "project": 0x2000, "shared_blocks": 0x4000, "verity": 0x8000, "orphan_present": 0x10000}
features = field("Filesystem features").split()
def feature_word(table):
    return sum(table[name] for name in features if name in table)
assert all(any(name in table for table in (compat, incompat, ro_compat)) for name in features), features
block = number("Block size")
states = {"clean": 1, "not clean": 0}
errors = {"Continue": 1, "Remount read-only": 2, "Panic": 3}
oses = {"Linux": 0, "Hurd": 1, "Masix": 2, "FreeBSD": 3, "Lites": 4}
hashes = {"legacy": 0, "half_md4": 1, "tea": 2}
blocks = number("Block count")
reserved = number("Reserved block count")
free = number("Free blocks")
lines = ["pattern ext4-superblock", "sample ext4-mkfs.img", "offset 1024", "format little dec ascii"]
def put(name, value):
    lines.append("field %s = %s" % (name, value))
for name, value in [
        ("inodesCount", number("Inode count")), ("blocksCountLo", blocks & 0xFFFFFFFF),
        ("reservedBlocksCountLo", reserved & 0xFFFFFFFF), ("freeBlocksCountLo", free & 0xFFFFFFFF),
        ("freeInodesCount", number("Free inodes")), ("firstDataBlock", number("First block")),
        ("logBlockSize", (block // 1024).bit_length() - 1),
        ("logClusterSize", (number("Fragment size") // 1024).bit_length() - 1),
        ("blocksPerGroup", number("Blocks per group")), ("clustersPerGroup", number("Fragments per group")),
        ("inodesPerGroup", number("Inodes per group")), ("mountTime", when("Last mount time")),
        ("writeTime", when("Last write time")), ("mountCount", number("Mount count")),
        ("maxMountCount", number("Maximum mount count") & 0xFFFF), ("state", states[field("Filesystem state")]),
        ("errors", errors[field("Errors behavior")]), ("minorRevLevel", 0),
        ("lastCheckTime", when("Last checked")), ("checkInterval", number("Check interval")),
        ("creatorOs", oses[field("Filesystem OS type")]), ("revLevel", number("Filesystem revision #")),
        ("defaultReservedUid", number("Reserved blocks uid")), ("defaultReservedGid", number("Reserved blocks gid")),
        ("firstInode", number("First inode")), ("inodeSize", number("Inode size")), ("blockGroupNumber", 0),
        ("featureCompat", feature_word(compat)), ("featureIncompat", feature_word(incompat)),
        ("featureRoCompat", feature_word(ro_compat)), ("algorithmUsageBitmap", 0), ("preallocBlocks", 0),
        ("preallocDirBlocks", 0), ("reservedGdtBlocks", number("Reserved GDT blocks")),
        ("journalInode", number("Journal inode")), ("journalDevice", 0), ("lastOrphan", 0),
        ("defaultHashVersion", hashes[field("Default directory hash")]),
        ("journalBackupType", 1 if field("Journal backup") == "inode blocks" else 0),
        ("descriptorSize", number("Group descriptor size")), ("firstMetaBlockGroup", 0),
        ("mkfsTime", when("Filesystem created")), ("blocksCountHi", blocks >> 32),
        ("reservedBlocksCountHi", reserved >> 32), ("freeBlocksCountHi", free >> 32),
        ("minExtraInodeSize", number("Required extra isize")), ("wantExtraInodeSize", number("Desired extra isize")),
        ("raidStride", 0), ("mmpInterval", 0), ("mmpBlock", 0), ("raidStripeWidth", 0),
        ("logGroupsPerFlex", number("Flex block group size").bit_length() - 1),
        ("checksumType", {"crc32c": 1}[field("Checksum type")]), ("encryptionLevel", 0), ("reservedPad", 0),
        ("kilobytesWritten", int(re.match(r"(\d+) kB$", field("Lifetime writes")).group(1))),
        ("snapshotInode", 0), ("snapshotId", 0), ("snapshotReservedBlocks", 0), ("snapshotList", 0),
        ("errorCount", 0), ("firstErrorTime", 0), ("firstErrorInode", 0), ("firstErrorBlock", 0),
        ("firstErrorLine", 0), ("lastErrorTime", 0), ("lastErrorInode", 0), ("lastErrorLine", 0),
        ("lastErrorBlock", 0), ("userQuotaInode", 0), ("groupQuotaInode", 0),
        ("overheadClusters", number("Overhead clusters")), ("lostFoundInode", 0), ("projectQuotaInode", 0),
        ("checksumSeed", 0), ("writeTimeHi", when("Last write time") >> 32), ("mountTimeHi", 0),
        ("mkfsTimeHi", when("Filesystem created") >> 32), ("lastCheckTimeHi", when("Last checked") >> 32),
        ("firstErrorTimeHi", 0), ("lastErrorTimeHi", 0), ("firstErrorCode", 0), ("lastErrorCode", 0),
        ("encoding", 0), ("encodingFlags", 0), ("orphanFileInode", 0)]:
    put(name, value)
put("volumeName", '"%s"' % field("Filesystem volume name"))
put("lastMounted", '"%s"' % field("Last mounted on"))
for name in ("firstErrorFunction", "lastErrorFunction", "mountOptions"):
    put(name, '""')
lines.append("format little hex bytes")
put("magic", "0x%04X" % int(field("Filesystem magic number"), 16))
put("uuid", " ".join("%02X" % b for b in uuid.UUID(field("Filesystem UUID")).bytes))
put("hashSeed", " ".join("%02X" % b for b in uuid.UUID(field("Directory Hash Seed")).bytes))
put("journalUuid", " ".join(["00"] * 16))
put("defaultMountOptions", "0x%08X" % bits(field("Default mount options"), {"user_xattr": 0x4, "acl": 0x8}))
put("flags", "0x%08X" % bits(field("Filesystem flags"), {"signed_directory_hash": 0x1, "unsigned_directory_hash": 0x2, "test_filesystem": 0x4}))
put("journalBlocks", journal_blocks + " ...")
put("backupBlockGroups", " ".join(["00"] * 8))
put("encryptionAlgorithms", "00 00 00 00")
put("encryptionSalt", " ".join(["00"] * 16))
put("reserved", " ".join(["00"] * 16) + " ...")
put("checksum", "0x%08X" % int(field("Checksum"), 16))
print("\n".join(lines))
PY
