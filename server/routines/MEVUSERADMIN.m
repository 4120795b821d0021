MEVUSERADMIN ; phserver --users: users, their keys, and their classes
 ; The audit records each change and who ran the command. The words arrive in the environment, never as code: mev_words,
 ; one a line.
 ; ^MEVUSR(user,0)=name ^ description ^ class ^ "1" may sign on
 ; ^MEVUSR(user,"KEY",key)=""    ^MEVUSR(user,"PAR",name)=value
 ;
ADMIN ; Entry point: carries out the action and prints the result, or prints a refusal and exits with 1
 NEW action,audit,count,extra,ien,name,person,reply,touched,user,words
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 SET words=$TRANSLATE($ZTRNLNM("mev_words"),"^"," "),words=$TRANSLATE(words,$CHAR(10),"^")
 SET action=$PIECE(words,"^"),name=$PIECE(words,"^",2),count=$LENGTH(words,"^")
 SET user=0,person=$ZTRNLNM("mev_administrator"),reply=""
 IF count=1,action=""!(action="list") DO LIST HALT
 IF "^list^add^disable^enable^keys^class^block^unblock^"'[("^"_action_"^") DO
 . DO FAIL("Unknown action: "_action_". Use list, add, disable, enable, keys, class, block or unblock.")
 IF name="" DO FAIL("The user's name is missing.")
 IF count>40 DO FAIL("Too many words.")
 SET ien=$$NAMED^MEVHOSTCALLS(name)
 IF action="disable",count=3,ien'="" DO
 . IF ("^"_ien_"^")'[("^"_$PIECE(words,"^",3)_"^") DO
 . . DO FAIL("Not the number of a user named "_name_" who may sign on: "_$PIECE(words,"^",3))
 . SET ien=$PIECE(words,"^",3),count=2
 IF ien["^" DO
 . WRITE "Several users of this name may sign on. Disable all but one: --users disable """,name,""" NUMBER.",!
 . DO FAIL("The numbers are "_$TRANSLATE(ien,"^"," ")_".")
 SET extra=$SELECT(action="list":2,count<3:0,"^disable^enable^block^unblock^"[("^"_action_"^"):3,1:0)
 IF extra DO FAIL("Unexpected word: "_$PIECE(words,"^",extra))
 IF ien,count=2,"^keys^class^"[("^"_action_"^") DO SHOW(ien) HALT
 DO CHANGE
 HALT
 ;
CHANGE ; Checks and carries out the action in one transaction, with its entry in the audit
 NEW asked,entry,refusals
 SET asked=$TRANSLATE(words,"^"," ")
 TSTART ():SERIAL
 KILL touched
 SET audit=$$BEGIN^MEVAUDIT,reply=1
 IF action="add" DO ADD
 IF action'="add" DO:action'["block"!ien KEPT
 SET entry=$SELECT(action="disable":"ABLE(0)",action="enable":"ABLE(1)",action="block":"BLOCK(1)",1:"BLOCK(0)")
 IF action="keys"!(action="class") SET entry=$SELECT(action="keys":"KEYS",1:"CLASS")
 IF action'="add" DO @entry
 DO CHANGE^MEVAUDIT("USERS "_action)
 TCOMMIT
 DO:ien SHOW(ien)
 QUIT
 ;
FAIL(text) ; Prints a refusal and exits without a change
 IF $TLEVEL TROLLBACK
 WRITE text,!
 ZHALT 1
 ;
KEPT ; Checks that the user exists and copies the entry to the audit
 IF 'ien DO FAIL("There is no user named "_name_".")
 DO KEEP^MEVFILES("^MEVUSR",ien)
 QUIT
 ;
ADD ; add NAME [DESCRIPTION]
 NEW bad,description,other
 SET other=$ORDER(^MEVUSR("B",name,""))
 IF other SET other=other_$SELECT($PIECE(^MEVUSR(other,0),"^",4):".",1:", who may not sign on; see --users enable.")
 IF other'="" DO FAIL("There is already a user named "_name_", number "_other)
 IF $LENGTH(name)<3!($LENGTH(name)>80) DO FAIL("A name has 3 to 80 bytes.")
 IF $$PRINTABLE^MEVTEXT(name,"")'=name!($ZTRNLNM("mev_words")["^") DO
 . DO FAIL("A name has no control characters and no ^.")
 IF $$CAPITALS(name)'=name DO FAIL("Write the name in capital letters, as in the certificate: "_$$CAPITALS(name))
 SET bad=name'?1.E1","1.E!($LENGTH(name,",")'=2)!(name[", ")!(name[" ,")!(name'=$$TRIM^MEVTEXT(name))
 SET bad=bad!(name["""")!(name["\")
 IF bad DO FAIL("A name is LAST,FIRST: a comma, no blanks beside it, no quotes or backslashes.")
 SET description=$PIECE(words,"^",3)
 IF $LENGTH(description)>200!(count>3) DO FAIL("The description is one quoted word of at most 200 bytes.")
 SET ien=$$FILE^MEVFILES("^MEVUSR",0,name_"^"_$$PRINTABLE^MEVTEXT(description,"")_"^^1")
 QUIT
 ;
CAPITALS(name) ; The name in capital letters, including accented letters of Western Europe
 NEW at,byte
 SET name=$$UPPER^MEVCODES(name)
 FOR at=2:1:$LENGTH(name) DO
 . SET byte=$ASCII(name,at)
 . IF $ASCII(name,at-1)=195,byte>159,byte'=183,byte<191 SET $EXTRACT(name,at)=$CHAR(byte-32)
 QUIT name
 ;
ABLE(may) ; disable NAME, enable NAME
 IF may,$$NAMED^MEVHOSTCALLS(name)'=ien,$PIECE(^MEVUSR($$NAMED^MEVHOSTCALLS(name),0),"^",4) DO
 . DO FAIL("Another user of this name may sign on.")
 SET $PIECE(^MEVUSR(ien,0),"^",4)=may
 QUIT
 ;
KEYS ; keys NAME [+KEY|-KEY ...]
 NEW index,key,word
 FOR index=3:1:count SET word=$PIECE(words,"^",index),key=$EXTRACT(word,2,99) DO
 . IF "+-"'[$EXTRACT(word)!(key="") DO FAIL("Write + to grant a key and - to revoke it: "_word)
 . IF $$KNOWN'[("^"_key_"^") DO
 . . DO FAIL("Unknown key: "_key_". The keys are: "_$$NAMES_". Quote a key with blanks.")
 . IF $EXTRACT(word)="+" SET ^MEVUSR(ien,"KEY",key)="" QUIT
 . KILL ^MEVUSR(ien,"KEY",key)
 QUIT
 ;
KNOWN() ; The keys that the server and the panel check
 NEW keys
 SET keys="^PROVIDER^MEVZ REP HIST EDIT^MEVZ PEDIATRIC EDIT^MEVZ ELDER CASE EDIT^MEVZ ASTHMA EDIT"
 QUIT keys_"^MEVZ TX CONTRACT EDIT^MEVZ ER EDIT^QASZMENU^MEVZ CAC^MEVZ VIEW ONLY^"
 ;
NAMES() ; The list of keys for a message
 NEW index,list
 SET list=$PIECE($$KNOWN,"^",2)
 FOR index=3:1:$LENGTH($$KNOWN,"^")-1 SET list=list_", "_$PIECE($$KNOWN,"^",index)
 QUIT list
 ;
CLASS ; class NAME [CLASS|+CLASS|-]: puts the user into a class, a new class, or none
 NEW class,word
 SET word=$PIECE(words,"^",3)
 IF count>3!(word="") DO FAIL("The class is one quoted word.")
 IF word="-" SET $PIECE(^MEVUSR(ien,0),"^",3)="" QUIT
 SET class=$$CLASSED($TRANSLATE(word,"+"))
 IF $EXTRACT(word)="+" DO
 . SET word=$EXTRACT(word,2,99)
 . IF class DO FAIL("There is already a class "_word_".")
 . IF $LENGTH(word)<3!($LENGTH(word)>40)!(word'?1U.(1U,1N,1" ",1"-")) DO
 . . DO FAIL("A class has 3 to 40 capital letters, digits, blanks and hyphens.")
 . SET class=$$FILE^MEVFILES("^MEVCLS",0,word)
 IF 'class DO FAIL("Unknown class: "_word_". The classes are: "_$$CLASSES_". Write + before a new one.")
 SET $PIECE(^MEVUSR(ien,0),"^",3)=class
 QUIT
 ;
CLASSED(name) ; The number of a class, empty for an unknown name
 QUIT $ORDER(^MEVCLS("B",$SELECT(name="":" ",1:$EXTRACT(name,1,80)),""))
 ;
CLASSES() ; The list of classes for a message
 NEW list,name
 SET (list,name)=""
 FOR  SET name=$ORDER(^MEVCLS("B",name)) QUIT:name=""  SET list=list_$SELECT(list="":"",1:", ")_name
 QUIT $SELECT(list="":"none yet",1:list)
 ;
BLOCK(on) ; block NAME|CLASS, unblock NAME|CLASS: editing of reproductive histories
 NEW class,number,root
 SET class=$SELECT(ien:"",1:$$CLASSED(name))
 IF 'ien,'class DO FAIL("There is no user and no class named "_name_".")
 SET root=$SELECT(ien:"^MEVUSR",1:"^MEVCLS"),number=$SELECT(ien:ien,1:class)
 DO:'ien KEEP^MEVFILES(root,class)
 IF on SET @root@(number,"PAR","MEV DISABLE REP HIST EDITING")=1
 ELSE  KILL @root@(number,"PAR","MEV DISABLE REP HIST EDITING")
 IF class WRITE "Class ",name,": ",$SELECT(on:"no editing of",1:"may edit")," reproductive histories"
 IF class WRITE $SELECT(on:"",1:", as the keys allow"),!
 QUIT
 ;
LIST ; Prints all users
 NEW ien,shown
 SET (ien,shown)=0
 FOR  SET ien=$ORDER(^MEVUSR(ien)) QUIT:'ien  DO SHOW(ien) SET shown=1
 IF 'shown WRITE "There are no users yet. The first one: --users add LAST,FIRST",!
 QUIT
 ;
SHOW(ien) ; Prints a user in one line
 NEW class,key,list,node
 SET node=^MEVUSR(ien,0),(key,list)="",class=$PIECE(node,"^",3)
 FOR  SET key=$ORDER(^MEVUSR(ien,"KEY",key)) QUIT:key=""  SET list=list_$SELECT(list="":"",1:", ")_key
 WRITE $JUSTIFY(ien,5),"  ",$PIECE(node,"^"),$SELECT($PIECE(node,"^",4):"",1:" (may not sign on)")
 WRITE "; keys: ",$SELECT(list="":"none",1:list)
 IF class'="" WRITE "; class ",$PIECE($GET(^MEVCLS(class,0)),"^")
 IF $GET(^MEVUSR(ien,"PAR","MEV DISABLE REP HIST EDITING")) WRITE "; no editing of reproductive histories"
 IF $PIECE(node,"^",2)'="" WRITE "; ",$PIECE(node,"^",2)
 WRITE !
 QUIT
