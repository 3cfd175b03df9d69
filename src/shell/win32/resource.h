// The version, and names of the numbers in the resource script that the program asks for. Menu
// commands are not among them: their numbers stand in the menu table.
#ifndef VELORA_RESOURCE_H
#define VELORA_RESOURCE_H

// The version that the program shows and its file tells.
#define VELORA_VERSION "4.7.4"
#define VELORA_VERSION_NUMBERS 4, 7, 4, 0
#define VELORA_TITLE "Velora For Windows " VELORA_VERSION

// The dialogs of questions, and their parts. The choices are numbered as they are answered.
#define IDD_QUESTION 301
#define IDD_TEXT 302
#define IDC_MESSAGE 310
#define IDC_CHOICE1 311
#define IDC_CHOICE2 312
#define IDC_CHOICE3 313
#define IDC_CHOICE4 314
#define IDC_ANSWER 320
#define IDC_LONG_MESSAGE 321

#endif
