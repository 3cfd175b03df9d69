lload "plugin.ddb"
shout "never odd or even" ;
count_words "to be or not to be" ;
loudest ["first" "second one"] ;
