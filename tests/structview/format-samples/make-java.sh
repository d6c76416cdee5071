# Java class files: OpenJDK's javac compiles one class for Java 8 and one for Java 17
# (--release). javap -v reports the minor and major versions and lists the constant pool; the
# pool's count is one more than its last index, or two more when the last entry is a long or a
# double, which take two slots.
out="$1"
cat >Greeting.java <<'JAVA'
public class Greeting {
    public static void main(String[] args) {
        System.out.println("hello, class file");
    }
}
JAVA
cat >Counter.java <<'JAVA'
public class Counter {
    static long total = 1234567890123L;

    static long add(long amount) {
        total += amount;
        return total;
    }
}
JAVA
javac --release 8 -d release8 Greeting.java
javac --release 17 -d release17 Counter.java
cp release8/Greeting.class "$out/java-class-release8.class"
cp release17/Counter.class "$out/java-class-release17.class"
for release in 8 17; do
  sample="java-class-release$release.class"
  javap -v "$out/$sample" >javap.txt
  minor="$(sed -n 's/^ *minor version: //p' javap.txt)"
  major="$(sed -n 's/^ *major version: //p' javap.txt)"
  read -r last_index last_kind <<<"$(sed -n 's/^ *#\([0-9]*\) = \([A-Za-z0-9]*\) .*/\1 \2/p' javap.txt | tail -n 1)"
  case "$last_kind" in Long | Double) count=$((last_index + 2)) ;; *) count=$((last_index + 1)) ;; esac
  cat >"$out/java-class-release$release.expect" <<EXPECT
pattern java-class
sample $sample
format big hex
field magic = 0xCAFEBABE
format big dec
field minorVersion = $minor
field majorVersion = $major
field constantPoolCount = $count
EXPECT
done
