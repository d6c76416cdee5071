# SQLite: sqlite3 makes a small database with chosen settings; the header values are what its
# pragmas report back. The change counter and the version-valid-for number have no pragma: they are
# read with od and must agree with each other, as they do after any normal write.
out="$1"
db="$out/sqlite-wal-utf16.db"
rm -f "$db"
sqlite3 "$db" <<'SQL' >/dev/null
PRAGMA page_size = 1024;
PRAGMA auto_vacuum = INCREMENTAL;
PRAGMA encoding = 'UTF-16le';
PRAGMA application_id = 1414286671;
PRAGMA user_version = 42;
PRAGMA default_cache_size = 500;
PRAGMA journal_mode = WAL;
CREATE TABLE notes(id INTEGER PRIMARY KEY, body TEXT);
INSERT INTO notes(body) VALUES ('first'), ('second');
CREATE INDEX notes_body ON notes(body);
SQL
ask() { sqlite3 "$db" "$1"; }
page_size="$(ask 'PRAGMA page_size')"
journal="$(ask 'PRAGMA journal_mode')"
[ "$journal" = wal ] # write and read versions are 2 only in WAL mode
encoding="$(ask 'PRAGMA encoding')"
case "$encoding" in UTF-8) text_encoding=1 ;; UTF-16le) text_encoding=2 ;; UTF-16be) text_encoding=3 ;; esac
auto_vacuum="$(ask 'PRAGMA auto_vacuum')"   # 2 = incremental
[ "$auto_vacuum" = 2 ]
largest_root="$(ask 'SELECT max(rootpage) FROM sqlite_schema')"
version="$(ask 'SELECT sqlite_version()')"
version_number="$(IFS=. read -r x y z <<<"$version"; echo $((x * 1000000 + y * 1000 + z)))"
counter="$(od -An -tu1 -j24 -N4 "$db" | awk '{ print $1 * 16777216 + $2 * 65536 + $3 * 256 + $4 }')"
valid_for="$(od -An -tu1 -j92 -N4 "$db" | awk '{ print $1 * 16777216 + $2 * 65536 + $3 * 256 + $4 }')"
[ "$counter" = "$valid_for" ]
cat >"$out/sqlite-wal-utf16.expect" <<EXPECT
pattern sqlite
sample sqlite-wal-utf16.db
format big dec ascii
field magic = "SQLite format 3"
field pageSize = $page_size
field writeVersion = 2
field readVersion = 2
field reservedSpace = 0
field maxPayloadFraction = 64
field minPayloadFraction = 32
field leafPayloadFraction = 32
field fileChangeCounter = $counter
field pageCount = $(ask 'PRAGMA page_count')
field firstFreelistTrunkPage = 0
field freelistPageCount = $(ask 'PRAGMA freelist_count')
field schemaCookie = $(ask 'PRAGMA schema_version')
field schemaFormat = 4
field defaultCacheSize = $(ask 'PRAGMA default_cache_size')
field largestRootPage = $largest_root
field textEncoding = $text_encoding
field userVersion = $(ask 'PRAGMA user_version')
field incrementalVacuum = 1
field applicationId = $(ask 'PRAGMA application_id')
field versionValidFor = $valid_for
field sqliteVersion = $version_number
format big hex
field magic = 53 51 4C 69 74 65 20 66 6F 72 6D 61 74 20 33 00
field reserved = 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 ...
field applicationId = $(printf '0x%08X' "$(ask 'PRAGMA application_id')")
EXPECT
