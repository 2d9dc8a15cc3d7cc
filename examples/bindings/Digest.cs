// Prints the SHA-1 digest of the words on the command line, through the service-provider layer.
using System;
using System.Runtime.InteropServices;
using System.Text;

// What a caller sees of a session; the library's own part follows it up to the size of the whole record.
[StructLayout(LayoutKind.Sequential)]
struct CspSessionHead {
    public uint ContextType;
    public uint Algorithm;
    public uint NumberOfAttributes;
    public IntPtr Attributes;
}

[StructLayout(LayoutKind.Sequential)]
struct CssmData {
    public uint Length;
    public IntPtr Data;
}

static class Morvane {
    const string Library = "MorvaneCrypto";
    public const uint ContextDigest = 5, AlgorithmSha1 = 8;
    public const int SessionBytes = 1104;  // with pointers of 8 bytes; 1076 with pointers of 4

    // The run time finds _CSP_DigestDataInit@12 by the plain name.
    [DllImport(Library, CallingConvention = CallingConvention.StdCall)]
    public static extern int CSP_DigestDataInit(uint csp, IntPtr handle, IntPtr context);

    [DllImport(Library, CallingConvention = CallingConvention.StdCall)]
    public static extern int CSP_DigestDataUpdate(uint csp, IntPtr handle, ref CssmData buffers, uint count);

    [DllImport(Library, CallingConvention = CallingConvention.StdCall)]
    public static extern int CSP_DigestDataFinal(uint csp, IntPtr handle, ref CssmData output);

    [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
    public static extern uint GetError();
}

static class Program {
    static void Check(int result) {
        if (result != 0) throw new InvalidOperationException("digest failed: " + Morvane.GetError());
    }

    static int Main(string[] words) {
        // The address of the session is the handle, so it must stay where it is: memory outside the collected heap.
        IntPtr session = Marshal.AllocHGlobal(Morvane.SessionBytes);
        IntPtr digest = Marshal.AllocHGlobal(20);
        try {
            Marshal.Copy(new byte[Morvane.SessionBytes], 0, session, Morvane.SessionBytes);
            var head = new CspSessionHead { ContextType = Morvane.ContextDigest, Algorithm = Morvane.AlgorithmSha1 };
            Marshal.StructureToPtr(head, session, false);
            Check(Morvane.CSP_DigestDataInit(0, session, IntPtr.Zero));
            foreach (string word in words) {
                byte[] octets = Encoding.UTF8.GetBytes(word);
                GCHandle pin = GCHandle.Alloc(octets, GCHandleType.Pinned);
                var piece = new CssmData { Length = (uint)octets.Length, Data = pin.AddrOfPinnedObject() };
                int result = Morvane.CSP_DigestDataUpdate(0, session, ref piece, 1);
                pin.Free();
                Check(result);
            }
            var output = new CssmData { Length = 20, Data = digest };
            Check(Morvane.CSP_DigestDataFinal(0, session, ref output));
            var bytes = new byte[output.Length];
            Marshal.Copy(digest, bytes, 0, bytes.Length);
            Console.WriteLine(BitConverter.ToString(bytes).Replace("-", "").ToLowerInvariant());
            return 0;
        } finally {
            Marshal.FreeHGlobal(digest);
            Marshal.FreeHGlobal(session);
        }
    }
}
