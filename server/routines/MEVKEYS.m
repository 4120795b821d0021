MEVKEYS ; Keys and user parameters
 ;
HOLDS(key) ; 1 if the signed-on user holds a key, else 0
 IF key="" QUIT 0
 IF $LENGTH(key)>100 QUIT 0
 QUIT $SELECT($DATA(^MEVUSR(user,"KEY",key)):1,1:0)
 ;
CHKSEC ; Call: keys separated by "|" ^ parameter name
 NEW class,index,keys,name,list
 SET list=$PIECE(param,"^"),name=$PIECE(param,"^",2),keys=""
 IF $LENGTH(list,"|")>1000 SET reply="-1^These are too many keys." QUIT
 FOR index=1:1:$LENGTH(list,"|") SET $PIECE(keys,"|",index)=$$HOLDS($PIECE(list,"|",index))
 SET class=$PIECE(^MEVUSR(user,0),"^",3)
 IF name=""!($LENGTH(name)>100) SET class=""
 SET class=$SELECT(class="":"",$GET(^MEVCLS(class,"PAR",name)):$PIECE(^MEVCLS(class,0),"^"),1:"")
 SET reply=keys_"^"_(+$$VALUE(name))_"~"_class
 QUIT
 ;
VALUE(name) ; A parameter's value for the signed-on user, else empty
 IF name="" QUIT ""
 IF $LENGTH(name)>100 QUIT ""
 QUIT $GET(^MEVUSR(user,"PAR",name))
 ;
GETPARM ; Call: parameter name
 SET reply=$$VALUE(param)
 QUIT
 ;
SETPARM ; Call: parameter name ^ value. Clients may not change a parameter that decides about permissions.
 NEW name,value
 SET name=$PIECE(param,"^"),value=$PIECE(param,"^",2)
 IF name'="RepHist-PedWtOpt" SET reply="-1^The parameter "_$$BRIEF^MEVTEXT(name,80)_" may not be changed here." QUIT
 IF value'?1(1"0",1"1",1"2") SET reply="-1^The weight unit must be 0, 1 or 2." QUIT
 DO KEEP^MEVFILES("^MEVUSR",user)
 SET ^MEVUSR(user,"PAR",name)=value,reply=1
 QUIT
