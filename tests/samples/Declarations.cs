/* Prints what a runtime makes of the declarations in LMOnline.cs: the sizes of the records with the offsets of
 * their fields, and which function of which library each name leads to. */
using System;
using System.Reflection;
using System.Runtime.InteropServices;
using Orvande;

static class Declarations
{
    static void PrintLayout(Type record)
    {
        Console.Write("{0} {1}:", record.Name, Marshal.SizeOf(record));
        foreach (FieldInfo field in record.GetFields())
            Console.Write(" {0} {1}", field.Name, Marshal.OffsetOf(record, field.Name));
        Console.WriteLine();
    }

    static void Main()
    {
        PrintLayout(typeof(MapShopResult));
        PrintLayout(typeof(DownloadProgress));
        foreach (MethodInfo method in typeof(LMOnline).GetMethods())
        {
            object[] imports = method.GetCustomAttributes(typeof(DllImportAttribute), false);
            if (imports.Length == 0) continue;
            DllImportAttribute import = (DllImportAttribute)imports[0];
            Console.WriteLine("{0} {1} {2} {3}", import.Value, import.EntryPoint, import.CallingConvention,
                              import.SetLastError);
        }
    }
}
