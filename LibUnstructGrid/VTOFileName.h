#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOString.h"

/// @file
/// File names, as texts: nothing here looks at the disk. The directory separator is "/"; where a function knows the
/// backslash too, it says so.

/// The text "/".
ORV_API VTString VTGetDirectorySeparator();

/// The folder of a name, without double-quote characters: the text up to the last "/", which stands at the end with
/// `bIncludeSeparator`. The empty text when there is no "/". A separator at the very front stays in any case: the path
/// of "/a" without separator is "/".
ORV_API VTString VTGetFilePath(const VTString& sName, bool bIncludeSeparator);

/// The text behind the last "/", without double-quote characters; with no "/" the whole name, and then its quote
/// characters stay. Without `bIncludeExtension` it is cut at the last ".", unless the name begins with that.
ORV_API VTString VTGetFileName(const VTString& sName, bool bIncludeExtension);

/// Path and name with one "/" between them, or the name alone when the path is empty.
ORV_API VTString VTCombinePathAndFileName(const VTString& sPath, const VTString& sName);

/// The name with each backslash turned into "/".
ORV_API VTString VTGetAsNativePath(const VTString& sName);

/// Whether two names are the same text, white space around them left out, backslash and "/" taken for the same. Case
/// is a difference. A null string is not the same as an empty one.
ORV_API bool VTCompareFileNames(VTString sFirst, VTString sSecond);

/// The name in double quotes: those that it has are taken out, and so is white space around it.
ORV_API VTString VTQuoteFileName(VTString sName);

/// Whether a name does not begin with "/"; true for an empty one. A name with a drive letter, or with a backslash in
/// front, is relative here. Asserts "sPathName.Length() > 0".
ORV_API bool VTIsRelativePath(const VTString& sPathName);

/// The extension with its dot: the file name from its last "." on, the empty text when there is none. A name that only
/// begins with a dot is all extension here.
ORV_API VTString VTGetFileExtension(const VTString& sName);

/// Cuts the name at its last ".". Asserts "psFileName".
///
/// The last backslash bounds the file name, and "/" does so only in a name without any backslash: of `a\b.c/d` the text
/// `a\b` is left.
/// @return false, with the name unchanged, when there is no ".", when it stands first, and when a separator stands
///         behind it.
ORV_API bool VTRemoveFileExtension(VTString* psFileName);

/// Puts another extension in the place of the one that is there. Without one there is nothing to replace, and the name
/// stays as it is. The dot may be missing from `sExtension`; a blank `sExtension` does nothing. Asserts "psFileName".
ORV_API void VTReplaceFileExtension(VTString* psFileName, VTString sExtension);

/// Gives a name an extension. A name without one gets it appended. With `bForce` it replaces another one; otherwise it
/// is appended behind: `a.txt` with `.dat` becomes `a.txt.dat`. The same extension is not put twice. The dot may be
/// missing from `sExtension`; a blank `sExtension` does nothing. Asserts "psFileName".
ORV_API void VTSetFileExtension(VTString* psFileName, VTString sExtension, bool bForce);

/// `sFile` as seen from the folder of `sBase`: a "../" for each separator, "/" or backslash, by which `sBase` goes on
/// behind what both have in common, then the rest of `sFile`.
///
/// Beware: characters are compared, not folders, with case, and up to the last separator of either name. From the base
/// "/ac/y" the file "/ab/x" is seen as `../b/x`, as the two have "/a" in common.
/// @return `sFile` as it is when either name is relative, when the two have fewer than 2 leading characters in common,
///         and when all of `sFile` is in common.
ORV_API VTString VTGetRelativeFilename(const VTString& sFile, const VTString& sBase);

/// A relative `sFile` seen from the folder of the absolute `sBase`, where each "..\" of `sFile` goes up one folder.
///
/// Beware: **the function does not come back when a relative `sFile` has "../" in it** and `sBase` is absolute. It
/// looks for the first one for ever. Only steps with a backslash are counted and taken. They are counted anywhere in
/// the name, and three characters are cut from its front for each, so names with steps elsewhere than in front are
/// damaged. The folder of a base in the root is "/", and gets another "/" behind.
/// @return `sFile` as it is when it is absolute, and when both names are relative.
ORV_API VTString VTGetAbsoluteFilename(const VTString& sFile, const VTString& sBase);

/// A name of fewer than `iMaxChars` characters: the root, "...", as many folders as fit next to the name, and the file
/// name. A file of `sCurrentDir`, which has to be given without its "/" at the end, shows its bare name.
///
/// Beware: folders are parted by the backslash alone, while the file name is what stands behind the last "/". A name
/// without "/" therefore comes back whole, and a name without at least two backslashes as its bare file name. Each
/// folder that is shown between "..." and the name is followed by the digits 92, not by a separator. When all folders
/// fit, "iPos >= 0" is asserted. The file name, and the root with the file name, are not cut, also when they are too
/// long.
ORV_API VTString VTGetFileDisplayName(const VTString& sFile, const VTString& sCurrentDir, int iMaxChars);
