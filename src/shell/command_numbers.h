// The numbers of the menu commands by name. Bare numbers stand here and nowhere else; what each
// command is called, where it stands and what it does is said in the menu table.
#pragma once

namespace velora {

enum CommandNumber : int {
  // File.
  kCmdNewDataBase = 101,
  kCmdOpenDataBase = 102,
  kCmdCloseDataBase = 103,
  kCmdBuildSegments = 105,
  kCmdSaveDataBase = 107,
  kCmdImportDataBase = 108,
  kCmdSaveCopy = 109,
  kCmdSaveWindow = 111,
  kCmdSaveControlText = 112,
  kCmdQuit = 113,

  // Items of no menu that are switched off at the start.
  kCmdOff130 = 130,
  kCmdOff133 = 133,
  kCmdOff136 = 136,
  kCmdOff137 = 137,

  // Edit of text, and steps back and forth on every bar.
  kCmdUndo = 201,
  kCmdRedo = 202,
  kCmdCut = 203,
  kCmdCopy = 204,
  kCmdPaste = 205,
  kCmdClear = 206,
  kCmdFind = 208,
  kCmdFindAgain = 209,

  // Edit of pictures.
  kCmdMoveNodes = 301,
  kCmdExpandAll = 302,
  kCmdShrinkAll = 303,
  kCmdExpandSelection = 304,
  kCmdShrinkSelection = 305,
  kCmdLassoSubGraph = 307,
  kCmdCopySelection = 308,
  kCmdRefreshWindow = 309,
  kCmdClearSelection = 311,

  // Query.
  kCmdQuery = 401,
  kCmdIncreaseSpace = 403,
  kCmdDecreaseSpace = 404,
  kCmdResetSpace = 405,
  kCmdPreferences = 407,

  // Windows.
  kCmdCommit = 501,
  kCmdNewConstructors = 503,
  kCmdNewFunction = 504,
  kCmdNewNetwork = 505,
  kCmdNewGraphics = 506,
  kCmdNewNarrative = 507,
  kCmdNewAnnotation = 508,
  kCmdNewOrvek = 509,
  kCmdClearControl = 511,
  kCmdStack = 512,

  // Features of function pictures.
  kCmdAddInputs = 601,
  kCmdAddFunctions = 602,
  kCmdAddRecursive = 603,
  kCmdAddConstructors = 604,
  kCmdAddTypes = 605,
  kCmdAddHolds = 606,
  kCmdAddJunctions = 607,
  kCmdJoinNodes = 609,

  // Features of data-type pictures.
  kCmdDataAddTypes = 701,
  kCmdDataAddConstructors = 702,
  kCmdImportList = 703,
  kCmdDataAddFunctions = 704,
  kCmdDataAddJunctions = 705,
  kCmdDataJoinNodes = 707,

  // Filters of networks.
  kCmdDeleteBuiltIns = 801,
  kCmdDeleteConstructors = 802,
  kCmdDeleteLowest = 803,
  kCmdChildren = 805,
  kCmdDescendants = 806,
  kCmdDescendantsInNewWindow = 807,
  kCmdParents = 808,
  kCmdAncestors = 809,
  kCmdAncestorsInNewWindow = 810,
  kCmdExportNodes = 812,

  // Find in function pictures.
  kCmdGetFunction = 902,
  kCmdGetNextFunction = 903,
  kCmdGetFunctionNumber = 904,
  kCmdEvaluate = 906,
  kCmdRemoveFunction = 908,

  // Find in data-type pictures.
  kCmdGetDataType = 1002,
  kCmdGetNextDataType = 1003,
  kCmdRemoveDataType = 1005,

  // Find in networks.
  kCmdRootFunctions = 1102,
  kCmdGetNextNetwork = 1103,
  kCmdGetNetworkNumber = 1104,
  kCmdCreateNetwork = 1105,
  kCmdCreateFunctions = 1107,
  kCmdRemoveNetwork = 1109,

  // Colour.
  kCmdBlack = 1201,
  kCmdRed = 1203,
  kCmdMagenta = 1204,
  kCmdBlue = 1205,
  kCmdCyan = 1206,
  kCmdGreen = 1207,
  kCmdYellow = 1208,

  // Features of networks.
  kCmdNetAddFunctions = 1301,
  kCmdNetAddRecursive = 1302,
  kCmdNetAddJunctions = 1303,
  kCmdNetJoinNodes = 1305,

  // What accelerators send whatever the kind of the picture.
  kCmdAnyJoinNodes = 1401,
  kCmdAnyAddTypes = 1402,
  kCmdAnyAddFunctions = 1403,
  kCmdAnyAddJunctions = 1404,
  kCmdAnyGetByName = 1405,
  kCmdAnyGetNext = 1406,

  // View.
  kCmdZoomIn = 1500,
  kCmdZoomOut = 1501,
  kCmdZoomWhole = 1502,
  kCmdZoomFit = 1503,

  // Edit of pictures, further ones.
  kCmdAddConstants = 1550,
  kCmdNamePicture = 1551,
  kCmdTidy = 1552,
  kCmdDuplicate = 1553,
  kCmdShowValue = 1554,
  kCmdNextFault = 1555,
  kCmdShowText = 1556,

  // The network's own commands.
  kCmdNetworkFirst = 1600,
  kCmdHideBuiltIns = 1600,
  kCmdHideConstructors = 1601,
  kCmdHideSelection = 1602,
  kCmdHideNames = 1603,
  kCmdHideFar = 1604,
  kCmdListHidden = 1605,
  kCmdShowAll = 1606,
  kCmdPin = 1607,
  kCmdWays = 1608,
  kCmdCalls = 1609,
  kCmdUnreached = 1610,
  kCmdCircles = 1611,
  kCmdWriteNetwork = 1612,
  kCmdNetworkLast = 1649,

  // The desktop's own commands, and help.
  kCmdHelpOnName = 1650,
  kCmdKeys = 1651,
  kCmdGuide = 1652,
  kCmdAbout = 1653,
  kCmdWelcome = 1654,
  kCmdTile = 1655,
  kCmdTabs = 1656,
  kCmdReplace = 1657,
  kCmdLargerFont = 1658,
  kCmdSmallerFont = 1659,
  kCmdUsualFont = 1660,
  kCmdPrint = 1661,
  kCmdSavePdf = 1662,
  kCmdSavePng = 1663,
  kCmdSaveSvg = 1664,
  kCmdCloseWindow = 1665,
  kCmdRecentFirst = 1670,
  kCmdRecentLast = 1679,
  kCmdWindowBack = 1680,
  kCmdWindowForward = 1681,
};

} // namespace velora
